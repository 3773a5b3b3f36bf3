#include <algorithm>
#include <limits>

#include "unit/support/picture_files.h"

namespace {

using namespace test;

struct Bmp {
    std::uint32_t headerSize = 40;
    std::int32_t width = 3;
    std::int32_t height = 2;
    std::uint32_t bits = 24;
    std::string pixels = {};
    std::string palette = {};
    std::uint32_t compression = 0;
    std::vector<std::uint32_t> masks = {};
    std::uint32_t used = 0;
    std::int64_t offset = -1;  // what the header says where the pixels begin, where that is not true
    std::string behind = {};

    std::string file() const {
        std::string maskBytes;
        for (const std::uint32_t mask : masks) {
            maskBytes += number32(mask);
        }
        std::string header = number32(headerSize);
        const auto side = [](std::int32_t value) { return static_cast<std::uint32_t>(value); };
        if (headerSize == 12) {
            header += number16(side(width)) + number16(side(height)) + number16(1) + number16(bits);
        } else {
            header += number32(side(width)) + number32(side(height)) + number16(1) + number16(bits) +
                      number32(compression) + number32(static_cast<std::uint32_t>(pixels.size())) + number32(11811) +
                      number32(5906) + number32(used) + number32(0);
            header += headerSize == 64 ? "" : maskBytes;
            header.resize(std::max<std::size_t>(headerSize, headerSize == 40 ? header.size() : 0));
        }
        const std::size_t at = 14 + header.size() + palette.size();
        const std::size_t size = at + pixels.size() + behind.size();
        return "BM" + number32(static_cast<std::uint32_t>(size)) + number32(0) +
               number32(static_cast<std::uint32_t>(offset < 0 ? static_cast<std::int64_t>(at) : offset)) + header +
               palette + pixels + behind;
    }
};

struct Case {
    const char* name;
    Bmp bmp;
    std::string colors;
};

const std::string five4 = hex("000000 00 0000FF 00 00FF00 00 FF0000 00 FFFFFF 00");  // black, red, green, blue, white
const std::string five3 = hex("000000 0000FF 00FF00 FF0000 FFFFFF");
const std::string pixels24 = hex("FFFFFF 000000 0000FF 000000  0000FF 00FF00 FF0000 000000");  // bottom-up: wkr, rgb
const std::string pixels4 = hex("40100000 12300000");
const std::string pixels8 = hex("04000100 01020300");

// Every kind of header, depth, direction, palette and compression.
const std::vector<Case>& cases() {
    static const std::vector<Case> all = {
        {"OS/2 1.x, 24 bits", {12, 3, 2, 24, pixels24, {}}, "rgb/wkr"},
        {"OS/2 1.x, 4 bits, short palette", {12, 3, 2, 4, pixels4, five3}, "rgb/wkr"},
        {"OS/2 2.x, 16 bytes", {16, 3, 2, 8, pixels8, five4}, "rgb/wkr"},
        {"OS/2 2.x, half a number of colours used",
         {34, 3, 2, 4, hex("45100000 12300000"), five4, 0, {}, 5},
         "rgb/wkr"},
        {"OS/2 2.x, 64 bytes", {64, 3, 2, 24, pixels24, {}}, "rgb/wkr"},
        {"1 bit", {40, 9, 2, 1, hex("55800000 FF000000"), hex("0000FF 00 FFFFFF 00")}, "wwwwwwwwr/rwrwrwrww"},
        {"2 bits", {40, 3, 2, 2, hex("10000000 6C000000"), five4.substr(0, 16)}, "rgb/krk"},
        {"4 bits, colours used", {40, 3, 2, 4, pixels4, five4, 0, {}, 5}, "rgb/wkr"},
        {"8 bits, top-down", {40, 3, -2, 8, pixels8, five4, 0, {}, 5}, "wkr/rgb"},
        {"8 bits, number beyond the palette", {40, 3, 1, 8, hex("01FF0300"), five4, 0, {}, 5}, "rkb"},
        {"8 bits, more colours used than there are", {40, 3, 1, 8, hex("01020300"), five4, 0, {}, 5000}, "rgb"},
        {"4 bits, pixels said to be in the header", {40, 3, 2, 4, pixels4, five4, 0, {}, 5, 30}, "rgb/wkr"},
        {"4 bits, pixels said to be in the palette", {40, 3, 2, 4, pixels4, five4, 0, {}, 5, 62}, "rgb/wkr"},
        {"4 bits, pixels said to be behind the end", {40, 3, 2, 4, pixels4, five4, 0, {}, 5, 999999}, "rgb/wkr"},
        {"16 bits", {40, 3, 2, 16, hex("FF7F 0080 007C 0000  007C E003 1F80 0000"), {}}, "rgb/wkr"},
        {"16 bits, 5-6-5", {40, 2, 1, 16, hex("E0FF 0F84"), {}, 3, {0xF800, 0x7E0, 0x1F}}, "y<84827B>"},
        {"16 bits, alpha on white",
         {56, 4, 1, 16, hex("00FF 007F 0000 0070"), {}, 3, {0xF00, 0xF0, 0xF, 0xF000}},
         "r<FF8888>w<888888>"},
        {"16 bits, alpha forgotten", {56, 2, 1, 16, hex("000F F000"), {}, 3, {0xF00, 0xF0, 0xF, 0xF000}}, "rg"},
        {"32 bits, fourth byte no alpha",
         {108, 2, 1, 32, hex("0000FF00 00FF0080"), {}, 0, {0, 0, 0, 0xFF000000}},
         "rg"},
        {"32 bits, masks behind the header",
         {40, 2, 1, 32, hex("00FF0000 0000FF00"), {}, 3, {0xFF00, 0xFF0000, 0xFF}},
         "rg"},
        {"32 bits, alpha mask behind the header",
         {40, 2, 1, 32, hex("000000FF 0000FF00"), {}, 6, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}},
         "kw"},
        {"32 bits, 10 bits a channel",
         {52, 2, 1, 32, hex("000000C0 FFFF3F20"), {}, 3, {0xFFC00000, 0x3FF000, 0xFFF}},
         "<C00000><20FFFF>"},
        {"32 bits, V5",
         {124, 3, 1, 32, hex("0000FFFF 00FF00FF 000000FF"), {}, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}},
         "rgk"},
        {"RLE8", {40, 6, 2, 8, hex("0602 0000 0003 010304 00 0104 0202 0001"), five4, 1, {}, 5}, "rbwwgg/gggggg"},
        {"RLE8, rows and pixels left out",
         {40, 3, 4, 8, hex("0101 0002 0102 0102 0001"), five4, 1, {}, 5},
         "kkk/kkg/kkk/rkk"},
        {"RLE8, padding compressed",
         {40, 3, 2, 8, hex("0401 0000 0004 04030201 0000 0001"), five4, 1, {}, 5},
         "wbg/rrr"},
        {"RLE8, end not marked", {40, 2, 1, 8, hex("0201"), five4, 1, {}, 5}, "rr"},
        {"RLE4", {40, 7, 2, 4, hex("0712 0000 0112 0320 0003 1230 0001"), five4, 2, {}, 5}, "rgkgrgb/rgrgrgr"},
        {"RLE4, top-down", {40, 3, -2, 4, hex("0111 0212 0000 0340 0001"), five4, 2, {}, 5}, "rrg/wkw"},
    };
    return all;
}

TEST(Bmp, DecodesEveryVariant) {
    for (const Case& each : cases()) {
        const platform::Picture picture = decode(each.bmp.file());
        EXPECT_EQ(colorsOf(picture), each.colors) << each.name;
        EXPECT_EQ(picture.palette.size(), picture.bitsPerPixel == 24 ? 0U : std::size_t{1} << picture.bitsPerPixel)
            << each.name;
    }
    const platform::Picture picture = decode(cases()[3].bmp.file());
    EXPECT_NEAR(picture.dpiX, 300, 0.02);
    EXPECT_NEAR(picture.dpiY, 150, 0.02);
}

TEST(Bmp, RefusesEveryVariantCutOff) {
    for (const Case& each : cases()) {
        if (each.bmp.offset < 0) {
            expectRefusedOrSameCutOff(each.bmp.file(), each.name);
        }
    }
}

TEST(Bmp, WritesEveryVariantAsItWas) {
    for (const Case& each : cases()) {
        const std::string file = each.bmp.file();
        expectInvertible(file, each.name);
        if (each.bmp.compression != 1 && each.bmp.compression != 2) {
            EXPECT_EQ(encode(decode(file), file), file) << each.name;
        }
    }
}

TEST(Bmp, RefusesHeadersThatLie) {
    const Case lies[] = {
        {"width 0", {40, 0, 2, 24, pixels24, {}}, ""},
        {"width below 0", {40, -3, 2, 24, pixels24, {}}, ""},
        {"height 0", {40, 3, 0, 24, pixels24, {}}, ""},
        {"height -2^31", {40, 1, std::numeric_limits<std::int32_t>::min(), 8, pixels24, {}}, ""},
        {"largest sides", {40, 0x7FFFFFFF, 0x7FFFFFFF, 32, pixels24, {}}, ""},
        {"30,000 x 30,000", {40, 30000, 30000, 1, pixels24, five4.substr(0, 8)}, ""},
        {"30,000 x 30,000, run lengths", {40, 30000, 30000, 8, pixels24, five4, 1, {}, 5}, ""},
        {"larger than the file", {40, 15000, 15000, 8, pixels24, five4, 0, {}, 5}, ""},
        {"3 bits", {40, 3, 2, 3, pixels24, {}}, ""},
        {"a header of 13 bytes", {13, 3, 2, 24, pixels24, {}}, ""},
        {"a header longer than the file", {0xFFFFFFFF, 3, 2, 24, "", {}}, ""},
        {"RLE8 of 4 bits", {40, 3, 2, 4, pixels4, five4, 1, {}, 5}, ""},
        {"a JPEG file", {40, 3, 2, 24, pixels24, {}, 4}, ""},
        {"no masks", {40, 3, 2, 32, pixels24 + pixels24, {}, 3, {0, 0, 0}}, ""},
        {"masks over each other", {40, 3, 2, 32, pixels24 + pixels24, {}, 3, {0xFF00, 0xFF, 0x1FF}}, ""},
        {"a mask with a hole", {40, 3, 2, 32, pixels24 + pixels24, {}, 3, {0xFF0000, 0x8100, 0xFF}}, ""},
        {"masks of more bits than a pixel", {40, 3, 2, 16, pixels24, {}, 3, {0xFF0000, 0xFF00, 0xFF}}, ""},
        {"a run past the end of the row", {40, 3, 1, 8, hex("0501 0001"), five4, 1, {}, 5}, ""},
        {"pixels past the end of the row", {40, 3, 1, 4, hex("0009 1111 1111 1111 0001"), five4, 2, {}, 5}, ""},
        {"a run past the last row", {40, 3, 1, 8, hex("0301 0000 0101 0001"), five4, 1, {}, 5}, ""},
        {"a step out of the picture", {40, 3, 1, 8, hex("0002 0004 0001"), five4, 1, {}, 5}, ""},
    };
    for (const Case& each : lies) {
        Bmp bmp = each.bmp;
        expectRefused(
            bmp.headerSize == 0xFFFFFFFF ? "BM" + std::string(12, '\0') + number32(bmp.headerSize) + "abc" : bmp.file(),
            each.name);
    }
}

// The place of the pixels moves, and with it what the header knows to be behind them.
TEST(Bmp, CompletesAPaletteTooShortForItsPixels) {
    for (const std::uint32_t compression : {0U, 1U}) {
        Bmp bmp{
            124,        4, 1, 8, compression == 0 ? hex("01040304") : hex("0004 01040304 0001"), five4.substr(0, 12),
            compression};
        bmp.used = 3;
        bmp.behind = "profile";
        std::string file = bmp.file();
        const std::string offset = number32(static_cast<std::uint32_t>(file.size() - 7 - 14));
        file.replace(14 + 112, 4, offset);
        EXPECT_EQ(colorsOf(decode(file)), "rkkk");
        expectInvertible(file, "short palette");
        const std::string once = inverted(file);
        EXPECT_EQ(colorsOf(decode(once)), "cwww");
        EXPECT_TRUE(once.ends_with("profile"));
        EXPECT_EQ(once.substr(14 + 112, 4), number32(static_cast<std::uint32_t>(once.size() - 7 - 14)));
        EXPECT_EQ(once.substr(2, 4), number32(static_cast<std::uint32_t>(once.size())));
    }
}

TEST(Bmp, KeepsUnusedBitsAndAlpha) {
    const Bmp bmp{108, 2, 1, 32, hex("000000FF FF00FF40"), {}, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}};
    const std::string file = bmp.file();
    platform::Picture picture = decode(file);
    EXPECT_EQ(colorsOf(picture), "k<FFBFFF>");
    picture.pixels[0] = 255;
    EXPECT_TRUE(encode(picture, file).ends_with(hex("0000FFFF FF00FF40")));
    EXPECT_TRUE(inverted(file).ends_with(hex("FFFFFFFF 004000FF")));

    const Bmp unused{40, 2, 1, 16, hex("0080 FF7F"), {}};
    EXPECT_TRUE(inverted(unused.file()).ends_with(hex("FFFF 0000")));
}

TEST(Bmp, WritesRunLengthsShorterThanPixels) {
    std::string pixels;
    for (int row = 0; row < 100; ++row) {
        pixels += hex("FF01 2D01 0005 010203020100 0704 0000");
    }
    const Bmp bmp{40, 312, 100, 8, pixels + hex("0001"), five4, 1, {}, 5};
    const std::string file = bmp.file();
    expectInvertible(file, "RLE8");
    EXPECT_LE(encode(decode(file), file).size(), file.size());
}

}  // namespace
