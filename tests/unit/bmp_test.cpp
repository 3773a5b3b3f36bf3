#include "unit/support/picture_files.h"

namespace {

using namespace support;

struct Bmp {
    std::uint32_t headerSize = 40;
    std::int64_t width = 3;
    std::int64_t height = 2;
    std::uint32_t bits = 24;
    std::string pixels;
    std::string palette = {};
    std::uint32_t compression = 0;
    std::vector<std::uint32_t> masks = {};
    std::uint32_t used = 0;
    std::int64_t offset = 0;  // what the header says where the pixels begin, where that is not true
    std::string behind = {};

    std::string file() const {
        std::string header = number32(headerSize);
        if (headerSize == 12) {
            header += number16(width) + number16(height) + number16(1) + number16(bits);
        } else {
            header += number32(width) + number32(height) + number16(1) + number16(bits) + number32(compression) +
                      number32(std::ssize(pixels)) + number32(11811) + number32(5906) + number32(used) + number32(0);
            for (const std::uint32_t mask : masks) {
                header += number32(mask);
            }
            header.resize(headerSize == 40 ? header.size() : headerSize);
        }
        const std::int64_t at = 14 + std::ssize(header + palette);
        return "BM" + number32(at + std::ssize(pixels + behind)) + number32(0) + number32(offset != 0 ? offset : at) +
               header + palette + pixels + behind;
    }
};

struct Case {
    const char* name;
    Bmp bmp;
    const char* colors = "";
};

const std::string five4 = "000000 00 0000FF 00 00FF00 00 FF0000 00 FFFFFF 00"_hex;  // black, red, green, blue, white
const std::string five3 = "000000 0000FF 00FF00 FF0000 FFFFFF"_hex;
const std::string pixels24 = "FFFFFF 000000 0000FF 000000  0000FF 00FF00 FF0000 000000"_hex;  // bottom-up: wkr, rgb
const std::string pixels4 = "40100000 12300000"_hex;
const std::string pixels8 = "04000100 01020300"_hex;

// Every kind of header, depth, direction, palette and compression.
const Case cases[] = {
    {"OS/2 2.x, 64 bytes", {64, 3, 2, 24, pixels24}, "rgb/wkr"},
    {"OS/2 1.x, 4 bits, short palette", {12, 3, 2, 4, pixels4, five3}, "rgb/wkr"},
    {"OS/2 2.x, 16 bytes", {16, 3, 2, 8, pixels8, five4}, "rgb/wkr"},
    {"OS/2 2.x, half a number of colours", {34, 3, 2, 4, "45100000 12300000"_hex, five4, 0, {}, 5}, "rgb/wkr"},
    {"1 bit", {40, 9, 2, 1, "55800000 FF000000"_hex, "0000FF 00 FFFFFF 00"_hex}, "wwwwwwwwr/rwrwrwrww"},
    {"2 bits", {40, 3, 2, 2, "10000000 6C000000"_hex, five4.substr(0, 16)}, "rgb/krk"},
    {"8 bits, top-down", {40, 3, -2, 8, pixels8, five4, 0, {}, 5}, "wkr/rgb"},
    {"number beyond the palette", {40, 3, 1, 8, "01FF0300"_hex, five4, 0, {}, 5}, "rkb"},
    {"more colours used than there are", {40, 3, 1, 8, "01020300"_hex, five4, 0, {}, 5000}, "rgb"},
    {"pixels said to be in the header", {40, 3, 2, 4, pixels4, five4, 0, {}, 5, 30}, "rgb/wkr"},
    {"pixels said to be in the palette", {40, 3, 2, 4, pixels4, five4, 0, {}, 5, 62}, "rgb/wkr"},
    {"pixels said to be behind the end", {40, 3, 2, 4, pixels4, five4, 0, {}, 5, 999999}, "rgb/wkr"},
    {"16 bits", {40, 3, 2, 16, "FF7F 0080 007C 0000  007C E003 1F80 0000"_hex}, "rgb/wkr"},
    {"16 bits, 5-6-5", {40, 2, 1, 16, "E0FF 0F84"_hex, {}, 3, {0xF800, 0x7E0, 0x1F}}, "y<84827B>"},
    {"alpha on white",
     {56, 4, 1, 16, "00FF 007F 0000 0070"_hex, {}, 3, {0xF00, 0xF0, 0xF, 0xF000}},
     "r<FF8888>w<888888>"},
    {"alpha forgotten", {56, 2, 1, 16, "000F F000"_hex, {}, 3, {0xF00, 0xF0, 0xF, 0xF000}}, "rg"},
    {"fourth byte no alpha", {108, 2, 1, 32, "0000FF00 00FF0080"_hex, {}, 0, {0, 0, 0, 0xFF000000}}, "rg"},
    {"masks behind the header", {40, 2, 1, 32, "00FF0000 0000FF00"_hex, {}, 3, {0xFF00, 0xFF0000, 0xFF}}, "rg"},
    {"four masks behind it",
     {40, 2, 1, 32, "000000FF 0000FF00"_hex, {}, 6, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}},
     "kw"},
    {"10 bits", {52, 2, 1, 32, "000000C0 FFFF3F20"_hex, {}, 3, {0xFFC00000, 0x3FF000, 0xFFF}}, "<C00000><20FFFF>"},
    {"V5", {124, 3, 1, 32, "0000FFFF 00FF00FF 000000FF"_hex, {}, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}}, "rgk"},
    {"RLE8", {40, 6, 2, 8, "0602 0000 0003 010304 00 0104 0202 0001"_hex, five4, 1, {}, 5}, "rbwwgg/gggggg"},
    {"rows and pixels left out", {40, 3, 4, 8, "0101 0002 0102 0102 0001"_hex, five4, 1, {}, 5}, "kkk/kkg/kkk/rkk"},
    {"padding compressed", {40, 3, 2, 8, "0401 0000 0004 04030201 0000 0001"_hex, five4, 1, {}, 5}, "wbg/rrr"},
    {"end not marked", {40, 2, 1, 8, "0201"_hex, five4, 1, {}, 5}, "rr"},
    {"RLE4", {40, 7, 2, 4, "0712 0000 0112 0320 0003 1230 0001"_hex, five4, 2, {}, 5}, "rgkgrgb/rgrgrgr"},
    {"RLE4, top-down", {40, 3, -2, 4, "0111 0212 0000 0340 0001"_hex, five4, 2, {}, 5}, "rrg/wkw"},
};

TEST(Bmp, EveryVariantIsReadAndWrittenAsItWas) {
    for (const auto& [name, bmp, colors] : cases) {
        SCOPED_TRACE(name);
        const std::string file = bmp.file();
        expectVariant(file, colors, bmp.offset == 0);
        if (bmp.compression != 1 && bmp.compression != 2) {
            EXPECT_EQ(encode(decode(file), file), file);
        }
    }
    const platform::Picture picture = decode(cases[3].bmp.file());
    EXPECT_NEAR(picture.dpiX, 300, 0.02);
    EXPECT_NEAR(picture.dpiY, 150, 0.02);
}

TEST(Bmp, RefusesHeadersThatLie) {
    for (const auto& [name, bmp, colors] : std::initializer_list<Case>{
             {"width 0", {40, 0, 2, 24, pixels24}},
             {"width below 0", {40, -3, 2, 24, pixels24}},
             {"height -2^31", {40, 1, -0x80000000LL, 8, pixels24}},
             {"largest sides", {40, 0x7FFFFFFF, 0x7FFFFFFF, 32, pixels24}},
             {"30,000 x 30,000, run lengths", {40, 30000, 30000, 8, pixels24, five4, 1, {}, 5}},
             {"larger than the file", {40, 15000, 15000, 8, pixels24, five4, 0, {}, 5}},
             {"3 bits", {40, 3, 2, 3, pixels24}},
             {"a header of 13 bytes", {13, 3, 2, 24, pixels24}},
             {"RLE8 of 4 bits", {40, 3, 2, 4, pixels4, five4, 1, {}, 5}},
             {"masks over each other", {40, 3, 2, 32, pixels24 + pixels24, {}, 3, {0xFF00, 0xFF, 0x1FF}}},
             {"a mask with a hole", {40, 3, 2, 32, pixels24 + pixels24, {}, 3, {0xFF0000, 0x8100, 0xFF}}},
             {"masks of more bits than a pixel", {40, 3, 2, 16, pixels24, {}, 3, {0xFF0000, 0xFF00, 0xFF}}},
             {"a run past the end of the row", {40, 3, 1, 8, "0501 0001"_hex, five4, 1, {}, 5}},
             {"pixels past the end of the row", {40, 3, 1, 4, "0009 1111 1111 1111 0001"_hex, five4, 2, {}, 5}},
             {"a run past the last row", {40, 3, 1, 8, "0301 0000 0101 0001"_hex, five4, 1, {}, 5}},
             {"a step out of the picture", {40, 3, 1, 8, "0002 0004 0001"_hex, five4, 1, {}, 5}},
         }) {
        SCOPED_TRACE(name);
        expectRefused(bmp.file());
    }
    expectRefused("BM" + std::string(12, '\0') + "FFFFFFFF 00"_hex);
}

// The place of the pixels moves, and with it what the header knows to be behind them.
TEST(Bmp, CompletesAPaletteTooShortForItsPixels) {
    for (const bool runs : {false, true}) {
        const std::string pixels = runs ? "0004 01040304 0001"_hex : "01040304"_hex;
        std::string file = Bmp{124, 4, 1, 8, pixels, five4.substr(0, 12), runs ? 1U : 0U, {}, 3, 0, "profile"}.file();
        const auto placeOfProfile = [](const std::string& content) { return number32(std::ssize(content) - 7 - 14); };
        file.replace(14 + 112, 4, placeOfProfile(file));
        expectVariant(file, "rkkk", false);
        const std::string once = inverted(file);
        EXPECT_TRUE(once.ends_with("profile"));
        EXPECT_EQ(once.substr(14 + 112, 4), placeOfProfile(once));
        EXPECT_EQ(once.substr(2, 4), number32(std::ssize(once)));
    }
}

TEST(Bmp, KeepsUnusedBitsAndAlpha) {
    const std::vector<std::uint32_t> masks{0xFF0000, 0xFF00, 0xFF, 0xFF000000};
    const std::string file = Bmp{108, 2, 1, 32, "000000FF FF00FF40"_hex, {}, 3, masks}.file();
    platform::Picture picture = decode(file);
    EXPECT_EQ(lettersOf(picture), "k<FFBFFF>");
    picture.pixels[0] = 255;
    EXPECT_TRUE(encode(picture, file).ends_with("0000FFFF FF00FF40"_hex));
    EXPECT_TRUE(inverted(file).ends_with("FFFFFFFF 004000FF"_hex));
    EXPECT_TRUE(inverted(Bmp{40, 2, 1, 16, "0080 FF7F"_hex}.file()).ends_with("FFFF 0000"_hex));
}

TEST(Bmp, WritesRunLengthsShorterThanPixels) {
    std::string pixels;
    for (int row = 0; row < 100; ++row) {
        pixels += "FF01 2D01 0005 010203020100 0704 0000"_hex;
    }
    const std::string file = Bmp{40, 312, 100, 8, pixels + "0001"_hex, five4, 1, {}, 5}.file();
    EXPECT_EQ(faultOf({decode, encode}, file), "");
    EXPECT_LE(encode(decode(file), file).size(), file.size());
}

}  // namespace
