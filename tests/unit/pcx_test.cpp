#include "pictures/picture_size.h"
#include "unit/support/picture_files.h"

namespace {

using namespace support;

struct Pcx {
    int version = 5;
    int bits = 1;
    int planes = 1;
    int width = 8;
    int height = 1;
    int bytesPerLine = 1;
    std::string pixels;
    std::string palette = {};  // in the header
    std::string behind = {};
    int encoding = 1;
    int left = 0;
    int top = 0;

    std::string file() const {
        const auto byte = [](int value) { return std::string(1, static_cast<char>(value)); };
        std::string header = byte(10) + byte(version) + byte(encoding) + byte(bits) + number16(left) + number16(top) +
                             number16(left + width - 1) + number16(top + height - 1) + number16(300) + number16(150) +
                             palette;
        header.resize(64);
        header += byte(0) + byte(planes) + number16(bytesPerLine) + number16(1);
        header.resize(128);
        return header + pixels + behind;
    }
};

struct Case {
    const char* name;
    Pcx pcx;
    const char* colors = "";
};

// 000 to 111 across the eight pixels of a byte, the lowest plane first.
const std::string countingPlanes = "55 33 0F"_hex;
const std::string primaries = "FF0000 00FF00 0000FF FFFF00 00FFFF FF00FF FFFFFF 000000"_hex;
const std::string large = "0C 000000 FF0000 00FF00 0000FF"_hex + std::string(768 - 12, '\xFF');
const std::string standard =
    "000000 0000AA 00AA00 00AAAA AA0000 AA00AA AA5500 AAAAAA 555555 5555FF 55FF55 55FFFF FF5555 FF55FF FFFF55 FFFFFF"_hex;

// Every version, depth, arrangement of planes, kind of palette and encoding.
const Case cases[] = {
    {"no palette", {5, 1, 1, 8, 1, 1, "AA"_hex}, "wkwkwkwk"},
    {"black and white the other way round", {5, 1, 1, 8, 1, 1, "AA"_hex, "FFFFFF 000000"_hex}, "kwkwkwkw"},
    {"red and green", {2, 1, 1, 8, 1, 1, "AA"_hex, "FF0000 00FF00"_hex}, "grgrgrgr"},
    {"standard palette not meant", {5, 1, 1, 8, 1, 1, "AA"_hex, standard}, "wkwkwkwk"},
    {"version 3", {3, 1, 1, 8, 1, 1, "AA"_hex, "FF0000 00FF00"_hex}, "wkwkwkwk"},
    {"3 planes", {4, 1, 3, 8, 1, 1, countingPlanes, primaries}, "rgbycmwk"},
    {"4 planes, version 3",
     {3, 1, 4, 8, 1, 1, countingPlanes + "C1FF"_hex, primaries},
     "<555555><5555FF><55FF55><55FFFF><FF5555><FF55FF><FFFF55>w"},
    {"4 planes, version 2 without palette",
     {2, 1, 4, 8, 1, 1, countingPlanes + '\0'},
     "k<0000AA><00AA00><00AAAA><AA0000><AA00AA><AA5500><AAAAAA>"},
    {"4 planes, all black", {5, 1, 4, 8, 1, 1, countingPlanes + '\0'}, "kkkkkkkk"},
    {"8 planes", {5, 1, 8, 8, 1, 1, "55 33 00 00 00 00 00 00"_hex, {}, large}, "krgbkrgb"},
    {"2 bits, adapter with white", {2, 2, 1, 4, 1, 1, "1B"_hex, "100000 600000"_hex}, "<0000AA><55FFFF><FF55FF>w"},
    {"without white", {5, 2, 1, 4, 1, 1, "1B"_hex, "F00000 000000"_hex}, "w<00AA00><AA0000><AA5500>"},
    {"without colour burst", {0, 2, 1, 4, 1, 1, "1B"_hex, "000000 A00000"_hex}, "k<55FFFF><FF5555>w"},
    {"2 bits, 2 planes", {5, 2, 2, 4, 1, 1, "1B 50"_hex, primaries}, "cmby"},
    {"4 bits, window", {5, 4, 1, 3, 2, 2, "0120 3450"_hex, primaries, {}, 1, 100, 7}, "rgb/ycm"},
    {"8 bits", {5, 8, 1, 3, 1, 4, "010203 00"_hex, {}, large}, "rgb"},
    {"palette not at the end", {5, 8, 1, 3, 1, 4, "010203 00"_hex, {}, large + "x"}, "rgb"},
    {"grey", {5, 8, 1, 3, 1, 3, "0080 C1FF"_hex}, "k<808080>w"},
    {"lines longer than needed",
     {5, 8, 3, 2, 2, 3, "C1FF 0000 00C1FF00 000000  0000 77 00 0000 00 C1FF 00"_hex},
     "rg/kb"},
    {"alpha", {5, 8, 4, 2, 1, 2, "C1FF 00 0000 0000 C1FF 80"_hex}, "r<7F7F7F>"},
    {"alpha forgotten", {5, 8, 4, 2, 1, 2, "C1FF 00 0000 0000 0000"_hex}, "rk"},
    {"not encoded", {5, 8, 1, 3, 2, 4, "01020377 C0010277"_hex, {}, large, 0}, "rgb/wrg"},
    {"runs across planes and lines", {5, 8, 3, 2, 2, 2, "CCFF"_hex}, "ww/ww"},
    {"a run past the end", {5, 1, 1, 8, 1, 2, "C9FF"_hex}, "wwwwwwww"},
    {"a run of nothing", {5, 1, 1, 8, 1, 1, "C000 AA"_hex}, "wkwkwkwk"},
};

TEST(Pcx, EveryVariantIsReadAndWrittenAsItWas) {
    for (const auto& [name, pcx, colors] : cases) {
        SCOPED_TRACE(name);
        const std::string file = pcx.file();
        expectVariant(file, colors, pcx.behind.empty());
        const std::string again = encode(decode(file), file);
        EXPECT_EQ(again.substr(0, 128), file.substr(0, 128));
        EXPECT_TRUE(again.ends_with(pcx.behind));
    }
    const platform::Picture picture = decode(cases[0].pcx.file());
    EXPECT_EQ(picture.bitsPerPixel, 1);
    EXPECT_EQ(picture.dpiX, 300);
    EXPECT_EQ(picture.dpiY, 150);
}

// A version that has no palette becomes the one that has, and nothing else changes in the header.
TEST(Pcx, WritesAPaletteWhereTheVersionHadNone) {
    const std::string sixteen = Pcx{3, 1, 4, 8, 1, 1, countingPlanes + "C1FF"_hex}.file();
    std::string once = inverted(sixteen);
    EXPECT_EQ(once[1], 5);
    EXPECT_EQ(once.substr(2, 14) + once.substr(64), sixteen.substr(2, 14) + sixteen.substr(64));

    const std::string grey = Pcx{3, 8, 1, 3, 1, 3, "0080 C1FF"_hex}.file();
    EXPECT_EQ(inverted(grey), (Pcx{3, 8, 1, 3, 1, 3, "C1FF 7F 00"_hex}.file()));
    platform::Picture red = decode(grey);
    red.palette[0x80] = {255, 0, 0};
    once = encode(red, grey);
    EXPECT_EQ(lettersOf(decode(once)), "krw");
    EXPECT_EQ(once[1], 5);
}

// What a palette is taken for must not change with its colours.
TEST(Pcx, WritesColorsThatLookLikeNoPalette) {
    for (const Pcx& pcx : {Pcx{5, 1, 1, 8, 1, 1, "AA"_hex, "FFFFFF FFFF55"_hex + standard.substr(6)},
                           Pcx{5, 2, 1, 4, 1, 1, "1B"_hex, "EFFFFF 5FFFFF FFFFFF FFFFFF"_hex},
                           Pcx{2, 1, 4, 8, 1, 1, countingPlanes + '\0', std::string(48, '\xFF')}}) {
        EXPECT_EQ(faultOf({decode, encode}, pcx.file()), "") << pcx.bits << ',' << pcx.planes;
    }
}

TEST(Pcx, RefusesHeadersThatLie) {
    for (const auto& [name, pcx, colors] : std::initializer_list<Case>{
             {"width 0", {5, 1, 1, 0, 1, 1, "AA"_hex}},
             {"sides below 0", {5, 1, 1, 0xFF00, 0xFF00, 1, "AA"_hex, {}, {}, 1, 0x200, 0x200}},
             {"65,536 x 4,000 in a tiny file", {5, 8, 1, 65536, 4000, 65535, "FFAA"_hex}},
             {"larger than its runs can be", {5, 8, 1, 1000, 1000, 1000, std::string(1000, '\xFF')}},
             {"lines too short", {5, 8, 1, 8, 1, 7, "12345678"}},
             {"no planes", {5, 8, 0, 8, 1, 8, "12345678"}},
             {"255 planes", {5, 8, 255, 8, 1, 8, "12345678"}},
             {"2 planes of 8 bits", {5, 8, 2, 8, 1, 8, "1234567812345678"}},
             {"fewer pixels", {5, 8, 1, 8, 1, 8, "1234567"}},
         }) {
        SCOPED_TRACE(name);
        expectRefused(pcx.file());
    }
}

TEST(PictureFile, LeavesOtherKindsToTheOthers) {
    for (const std::string_view other : {"", "B", "\x89PNG", "\x0A\x01\x01\x08 and so on", "\x0A"}) {
        EXPECT_EQ(encode({}, other), "andere");
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
