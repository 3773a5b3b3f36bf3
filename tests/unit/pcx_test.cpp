#include <algorithm>

#include "pictures/picture_size.h"
#include "unit/support/picture_files.h"

namespace {

using namespace test;

struct Pcx {
    std::uint32_t version = 5;
    std::uint32_t bits = 1;
    std::uint32_t planes = 1;
    std::uint32_t width = 8;
    std::uint32_t height = 1;
    std::uint32_t bytesPerLine = 1;
    std::string pixels = {};
    std::string palette = {};  // in the header
    std::string behind = {};
    std::uint32_t encoding = 1;
    std::uint32_t left = 0;
    std::uint32_t top = 0;

    std::string file() const {
        std::string table = palette;
        table.resize(48);
        const auto byte = [](std::uint32_t value) { return std::string(1, static_cast<char>(value)); };
        const std::string header = byte(10) + byte(version) + byte(encoding) + byte(bits) + number16(left) +
                                   number16(top) + number16(left + width - 1) + number16(top + height - 1) +
                                   number16(300) + number16(150) + table + byte(0) + byte(planes) +
                                   number16(bytesPerLine) + number16(1);
        return header + std::string(128 - header.size(), '\0') + pixels + behind;
    }
};

struct Case {
    const char* name;
    Pcx pcx;
    std::string colors;
};

// 000 to 111 across the eight pixels of a byte, the lowest plane first.
const std::string countingPlanes = hex("55 33 0F");
const std::string primaries = hex("FF0000 00FF00 0000FF FFFF00 00FFFF FF00FF FFFFFF 000000");
const std::string large = hex("0C 000000 FF0000 00FF00 0000FF") + std::string(768 - 12, '\xFF');
const std::string standard = hex(
    "000000 0000AA 00AA00 00AAAA AA0000 AA00AA AA5500 AAAAAA 555555 5555FF 55FF55 55FFFF FF5555 FF55FF FFFF55 FFFFFF");

// Every version, depth, arrangement of planes, kind of palette and encoding.
const std::vector<Case>& cases() {
    static const std::vector<Case> all = {
        {"1 bit, no palette", {5, 1, 1, 8, 1, 1, hex("AA"), {}}, "wkwkwkwk"},
        {"1 bit, black and white the other way round", {5, 1, 1, 8, 1, 1, hex("AA"), hex("FFFFFF 000000")}, "kwkwkwkw"},
        {"1 bit, red and green", {2, 1, 1, 8, 1, 1, hex("AA"), hex("FF0000 00FF00")}, "grgrgrgr"},
        {"1 bit, standard palette not meant", {5, 1, 1, 8, 1, 1, hex("AA"), standard}, "wkwkwkwk"},
        {"1 bit, version 3", {3, 1, 1, 8, 1, 1, hex("AA"), hex("FF0000 00FF00")}, "wkwkwkwk"},
        {"1 bit, 2 planes", {5, 1, 2, 8, 1, 2, hex("5500 3300"), primaries}, "rgbyrgby"},
        {"1 bit, 3 planes", {4, 1, 3, 8, 1, 1, countingPlanes, primaries}, "rgbycmwk"},
        {"1 bit, 4 planes, version 3",
         {3, 1, 4, 8, 1, 1, countingPlanes + hex("C1FF"), primaries},
         "<555555><5555FF><55FF55><55FFFF><FF5555><FF55FF><FFFF55>w"},
        {"1 bit, 4 planes, version 2 without palette",
         {2, 1, 4, 8, 1, 1, countingPlanes + '\0', {}},
         "k<0000AA><00AA00><00AAAA><AA0000><AA00AA><AA5500><AAAAAA>"},
        {"1 bit, 4 planes, all black", {5, 1, 4, 8, 1, 1, countingPlanes + '\0', {}}, "kkkkkkkk"},
        {"1 bit, 8 planes", {5, 1, 8, 8, 1, 1, hex("55 33 00 00 00 00 00 00"), {}, large}, "krgbkrgb"},
        {"2 bits", {5, 2, 1, 4, 1, 1, hex("1B"), primaries}, "rgby"},
        {"2 bits, adapter palette with white",
         {2, 2, 1, 4, 1, 1, hex("1B"), hex("100000 600000")},
         "<0000AA><55FFFF><FF55FF>w"},
        {"2 bits, adapter palette without white",
         {5, 2, 1, 4, 1, 1, hex("1B"), hex("F00000 000000")},
         "w<00AA00><AA0000><AA5500>"},
        {"2 bits, adapter without colour burst",
         {0, 2, 1, 4, 1, 1, hex("1B"), hex("000000 A00000")},
         "k<55FFFF><FF5555>w"},
        {"2 bits, 2 planes", {5, 2, 2, 4, 1, 1, hex("1B 50"), primaries}, "cmby"},
        {"4 bits, window", {5, 4, 1, 3, 2, 2, hex("0120 3450"), primaries, {}, 1, 100, 7}, "rgb/ycm"},
        {"8 bits", {5, 8, 1, 3, 1, 4, hex("010203 00"), {}, large}, "rgb"},
        {"8 bits, palette not at the end", {5, 8, 1, 3, 1, 4, hex("010203 00"), {}, large + "x"}, "rgb"},
        {"8 bits, grey", {5, 8, 1, 3, 1, 3, hex("0080 C1FF"), {}}, "k<808080>w"},
        {"24 bits, lines longer than needed",
         {5, 8, 3, 2, 2, 3, hex("C1FF 0000 00C1FF00 000000  0000 77 00 0000 00 C1FF 00"), {}},
         "rg/kb"},
        {"24 bits and alpha", {5, 8, 4, 2, 1, 2, hex("C1FF 00 0000 0000 C1FF 80"), {}}, "r<7F7F7F>"},
        {"24 bits, alpha forgotten", {5, 8, 4, 2, 1, 2, hex("C1FF 00 0000 0000 0000"), {}}, "rk"},
        {"not encoded", {5, 8, 1, 3, 2, 4, hex("01020377 C0010277"), {}, large, 0}, "rgb/wrg"},
        {"runs across planes and lines", {5, 8, 3, 2, 2, 2, hex("CCFF"), {}}, "ww/ww"},
        {"a run past the end", {5, 1, 1, 8, 1, 2, hex("C9FF"), {}}, "wwwwwwww"},
        {"a run of nothing", {5, 1, 1, 8, 1, 1, hex("C000 AA"), {}}, "wkwkwkwk"},
    };
    return all;
}

TEST(Pcx, DecodesEveryVariant) {
    for (const Case& each : cases()) {
        EXPECT_EQ(colorsOf(decode(each.pcx.file())), each.colors) << each.name;
    }
    const platform::Picture picture = decode(cases()[0].pcx.file());
    EXPECT_EQ(picture.bitsPerPixel, 1);
    EXPECT_EQ(picture.dpiX, 300);
    EXPECT_EQ(picture.dpiY, 150);
}

TEST(Pcx, RefusesEveryVariantCutOff) {
    for (const Case& each : cases()) {
        if (each.pcx.behind.empty()) {
            expectRefusedOrSameCutOff(each.pcx.file(), each.name);
        }
    }
}

TEST(Pcx, WritesEveryVariantAsItWas) {
    for (const Case& each : cases()) {
        const std::string file = each.pcx.file();
        expectInvertible(file, each.name);
        const std::string again = encode(decode(file), file);
        EXPECT_EQ(again.substr(0, 128), file.substr(0, 128)) << each.name;
        EXPECT_TRUE(again.ends_with(each.pcx.behind)) << each.name;
    }
}

// A version that has no palette becomes the one that has, and nothing else changes in the header.
TEST(Pcx, WritesAPaletteWhereTheVersionHadNone) {
    const Pcx sixteen{3, 1, 4, 8, 1, 1, countingPlanes + hex("C1FF"), {}};
    std::string once = inverted(sixteen.file());
    EXPECT_EQ(once[1], 5);
    EXPECT_EQ(once.substr(2, 14), sixteen.file().substr(2, 14));
    EXPECT_EQ(once.substr(64), sixteen.file().substr(64));

    const Pcx grey{3, 8, 1, 3, 1, 3, hex("0080 C1FF"), {}};
    EXPECT_EQ(inverted(grey.file()), Pcx(3, 8, 1, 3, 1, 3, hex("C1FF 7F 00"), {}).file());
    platform::Picture red = decode(grey.file());
    red.palette[0x80] = {255, 0, 0};
    once = encode(red, grey.file());
    EXPECT_EQ(colorsOf(decode(once)), "krw");
    EXPECT_EQ(once[1], 5);
}

// What a palette is taken for must not change with its colours.
TEST(Pcx, WritesColorsThatLookLikeNoPalette) {
    expectInvertible(Pcx(5, 1, 1, 8, 1, 1, hex("AA"), hex("FFFFFF FFFF55") + standard.substr(6)).file(), "1 bit");
    expectInvertible(Pcx(5, 2, 1, 4, 1, 1, hex("1B"), hex("EFFFFF 5FFFFF FFFFFF FFFFFF")).file(), "2 bits");
    expectInvertible(Pcx(2, 1, 4, 8, 1, 1, countingPlanes + '\0', std::string(48, '\xFF')).file(), "4 planes");
}

TEST(Pcx, RefusesHeadersThatLie) {
    const std::pair<const char*, Pcx> lies[] = {
        {"width 0", {5, 1, 1, 0, 1, 1, hex("AA"), {}}},
        {"sides below 0", {5, 1, 1, 0xFF00, 0xFF00, 1, hex("AA"), {}, {}, 1, 0x200, 0x200}},
        {"30,000 x 30,000", {5, 1, 1, 30000, 30000, 3750, hex("FFAA"), {}}},
        {"65,536 x 4,000 in a tiny file", {5, 8, 1, 65536, 4000, 65535, hex("FFAA"), {}}},
        {"larger than its runs can be", {5, 8, 1, 1000, 1000, 1000, std::string(1000, '\xFF'), {}}},
        {"lines too short", {5, 8, 1, 8, 1, 7, std::string(8, '1'), {}}},
        {"no planes", {5, 8, 0, 8, 1, 8, std::string(8, '1'), {}}},
        {"255 planes", {5, 8, 255, 8, 1, 8, std::string(8, '1'), {}}},
        {"2 planes of 8 bits", {5, 8, 2, 8, 1, 8, std::string(16, '1'), {}}},
        {"fewer pixels", {5, 8, 1, 8, 1, 8, std::string(7, '1'), {}}},
    };
    for (const auto& [name, pcx] : lies) {
        expectRefused(pcx.file(), name);
    }
}

TEST(PictureFile, LeavesOtherKindsToTheOthers) {
    NoOthers others;
    for (const std::string& other : {""s, "B"s, "\x89PNG"s, "\x0A\x01\x01\x08"s + std::string(200, '\0'), "\x0A"s}) {
        EXPECT_EQ(pictures::encodePicture({}, other, others), "andere");
    }
}

TEST(PictureFile, InvertsPixelsOrPalette) {
    platform::Picture picture = pictures::makePicture(3, 1, 2);
    picture.pixels = {0b00011000};
    picture.jpeg = "jpeg";
    picture.palette = {{0, 0, 0}, {255, 255, 255}, {255, 0, 0}, {0, 255, 255}};
    const auto palette = picture.palette;
    pictures::invert(picture);
    EXPECT_EQ(picture.palette, palette);
    EXPECT_EQ(picture.pixels.front(), 0b01001100);
    EXPECT_EQ(picture.jpeg, "");

    picture.palette[3] = {0, 255, 254};
    pictures::invert(picture);
    EXPECT_EQ(picture.palette[3], (platform::Color{255, 0, 1}));
    EXPECT_EQ(picture.pixels.front(), 0b01001100);
}

}  // namespace
