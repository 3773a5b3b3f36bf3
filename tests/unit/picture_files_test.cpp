// BMP and PCX files. In every variant that other programs write they are tested in tests/e2e/test_picture_files.py.
#include <array>
#include <tuple>

#include "pictures/bmp_file.h"
#include "pictures/pcx_file.h"
#include "pictures/picture_size.h"
#include "unit/support/adapter_test.h"
#include "unit/support/pixels.h"

namespace {

using support::faultOf;

class NoOthers : public platform::ImageFiles {
public:
    platform::PictureInfo inspect(std::string_view content) override { return decode(content); }
    platform::Picture decode(std::string_view) override { throw runtime::Error(runtime::errInvalidPicture, "andere"); }
    std::string inverted(std::string_view) override { return "andere"; }
} others;

platform::Picture decode(std::string_view content) { return pictures::decodePicture(content, others); }

std::string encode(const platform::Picture& picture, std::string_view original) {
    return pictures::isBmp(original) ? pictures::encodeBmp(picture, original) : pictures::encodePcx(picture, original);
}

std::string inverted(std::string_view content) { return pictures::invertedFile(content, others); }

std::tuple<int, int, int, double, double> infoOf(const platform::PictureInfo& info) {
    return {info.width, info.height, info.bitsPerPixel, info.dpiX, info.dpiY};
}

// The pixels of each row, "/" between rows: a letter for black (k), white, red, green, blue, cyan, magenta and yellow,
// the number in hexadecimal digits for other colours.
std::string lettersOf(const platform::Picture& picture) {
    std::string text;
    for (int y = 0; y < picture.height; ++y) {
        text += y > 0 ? "/" : "";
        for (int x = 0; x < picture.width; ++x) {
            const auto [red, green, blue] = support::colorAt(picture, x, y);
            std::array<char, 9> number{};
            std::snprintf(number.data(), number.size(), "<%02X%02X%02X>", red, green, blue);
            const bool pure = red % 255 == 0 && green % 255 == 0 && blue % 255 == 0;
            text += pure ? std::string(1, "kbgcrmyw"[red / 255 * 4 + green / 255 * 2 + blue / 255]) : number.data();
        }
    }
    return text;
}

// "00 FF"_hex as bytes.
std::string operator""_hex(const char* digits, std::size_t) {
    std::istringstream pairs(digits);
    std::string bytes;
    for (char high = 0, low = 0; pairs >> high >> low;) {
        bytes += static_cast<char>(std::stoi(std::string{high, low}, nullptr, 16));
    }
    return bytes;
}

std::string number16(std::int64_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

std::string number32(std::int64_t value) { return number16(value) + number16(value >> 16); }

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

    operator std::string() const {
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

    operator std::string() const {
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

const std::string five4 = "000000 00 0000FF 00 00FF00 00 FF0000 00 FFFFFF 00"_hex;  // black, red, green, blue, white
const std::string five3 = "000000 0000FF 00FF00 FF0000 FFFFFF"_hex;
const std::string pixels24 = "FFFFFF 000000 0000FF 000000  0000FF 00FF00 FF0000 000000"_hex;  // bottom-up: wkr, rgb
const std::string pixels4 = "40100000 12300000"_hex;
// 000 to 111 across the eight pixels of a byte, the lowest plane first.
const std::string planes = "55 33 0F"_hex;
const std::string primaries = "FF0000 00FF00 0000FF FFFF00 00FFFF FF00FF FFFFFF 000000"_hex;
const std::string large = "0C 000000 FF0000 00FF00 0000FF"_hex + std::string(768 - 12, '\xFF');
const std::string standard =
    "000000 0000AA 00AA00 00AAAA AA0000 AA00AA AA5500 AAAAAA 555555 5555FF 55FF55 55FFFF FF5555 FF55FF FFFF55 FFFFFF"_hex;

// Kinds of headers, depths, directions, arrangements of planes, palettes and compressions.
TEST(PictureFiles, OfEveryVariantAreReadAndWrittenAsTheyWere) {
    struct Case {
        const char* name;
        std::string file;
        const char* colors;
        bool whole = false;  // cut off it may show something else
    };
    for (const auto& [name, file, colors, whole] : std::initializer_list<Case>{
             {"OS/2 2.x, 64 bytes", Bmp{64, 3, 2, 24, pixels24}, "rgb/wkr"},
             {"OS/2 1.x, 4 bits, short palette", Bmp{12, 3, 2, 4, pixels4, five3}, "rgb/wkr"},
             {"OS/2 2.x, 16 bytes", Bmp{16, 3, 2, 8, "04000100 01020300"_hex, five4}, "rgb/wkr"},
             {"half a number of colours", Bmp{34, 3, 2, 4, "45100000 12300000"_hex, five4, 0, {}, 5}, "rgb/wkr"},
             {"1 bit", Bmp{40, 9, 2, 1, "55800000 FF000000"_hex, "0000FF 00 FFFFFF 00"_hex}, "wwwwwwwwr/rwrwrwrww"},
             {"2 bits", Bmp{40, 3, 2, 2, "10000000 6C000000"_hex, five4.substr(0, 16)}, "rgb/krk"},
             {"8 bits, top-down", Bmp{40, 3, -2, 8, "04000100 01020300"_hex, five4, 0, {}, 5}, "wkr/rgb"},
             {"number beyond the palette", Bmp{40, 3, 1, 8, "01FF0300"_hex, five4, 0, {}, 5}, "rkb"},
             {"more colours used than there are", Bmp{40, 3, 1, 8, "01020300"_hex, five4, 0, {}, 5000}, "rgb"},
             {"pixels said to be in the header", Bmp{40, 3, 2, 4, pixels4, five4, 0, {}, 5, 30}, "rgb/wkr", true},
             {"in the palette", Bmp{40, 3, 2, 4, pixels4, five4, 0, {}, 5, 62}, "rgb/wkr", true},
             {"behind the end", Bmp{40, 3, 2, 4, pixels4, five4, 0, {}, 5, 999999}, "rgb/wkr", true},
             {"16 bits", Bmp{40, 3, 2, 16, "FF7F 0080 007C 0000  007C E003 1F80 0000"_hex}, "rgb/wkr"},
             {"5-6-5", Bmp{40, 2, 1, 16, "E0FF 0F84"_hex, {}, 3, {0xF800, 0x7E0, 0x1F}}, "y<84827B>"},
             {"alpha forgotten", Bmp{56, 2, 1, 16, "000F F000"_hex, {}, 3, {0xF00, 0xF0, 0xF, 0xF000}}, "rg"},
             {"no alpha", Bmp{108, 2, 1, 32, "0000FF00 00FF0080"_hex, {}, 0, {0, 0, 0, 0xFF000000}}, "rg"},
             {"masks behind it", Bmp{40, 2, 1, 32, "00FF0000 0000FF00"_hex, {}, 3, {0xFF00, 0xFF0000, 0xFF}}, "rg"},
             {"four", Bmp{40, 2, 1, 32, "0F0F0FFF 0F0FFF00"_hex, {}, 6, {0xF0, 0xF000, 0xF00000, 0xF0000000}}, "kw"},
             {"10 bits", Bmp{52, 2, 1, 32, "000000C0 FFFF3F20"_hex, {}, 3, {0xFFC00000, 0x3FF000, 0xFFF}},
              "<C00000><20FFFF>"},
             {"RLE8", Bmp{40, 6, 2, 8, "0602 0000 0003 010304 00 0104 0202 0001"_hex, five4, 1}, "rbwwgg/gggggg"},
             {"rows and pixels left out", Bmp{40, 3, 4, 8, "0101 0002 0102 0102 0001"_hex, five4, 1},
              "kkk/kkg/kkk/rkk"},
             {"padding compressed", Bmp{40, 3, 2, 8, "0401 0000 0004 04030201 0000 0001"_hex, five4, 1}, "wbg/rrr"},
             {"end not marked", Bmp{40, 2, 1, 8, "0201"_hex, five4, 1}, "rr"},
             {"RLE4", Bmp{40, 7, 2, 4, "0712 0000 0112 0320 0003 1230 0001"_hex, five4, 2}, "rgkgrgb/rgrgrgr"},
             {"RLE4, top-down", Bmp{40, 3, -2, 4, "0111 0212 0000 0340 0001"_hex, five4, 2}, "rrg/wkw"},
             {"no palette", Pcx{5, 1, 1, 8, 1, 1, "AA"_hex}, "wkwkwkwk"},
             {"black and white the other way round", Pcx{5, 1, 1, 8, 1, 1, "AA"_hex, "FFFFFF 000000"_hex}, "kwkwkwkw"},
             {"red and green", Pcx{2, 1, 1, 8, 1, 1, "AA"_hex, "FF0000 00FF00"_hex}, "grgrgrgr"},
             {"standard palette not meant", Pcx{5, 1, 1, 8, 1, 1, "AA"_hex, standard}, "wkwkwkwk"},
             {"version 3", Pcx{3, 1, 1, 8, 1, 1, "AA"_hex, "FF0000 00FF00"_hex}, "wkwkwkwk"},
             {"3 planes", Pcx{4, 1, 3, 8, 1, 1, planes, primaries}, "rgbycmwk"},
             {"4 planes, version 3", Pcx{3, 1, 4, 8, 1, 1, planes + "C1FF"_hex, primaries},
              "<555555><5555FF><55FF55><55FFFF><FF5555><FF55FF><FFFF55>w"},
             {"version 2 without palette", Pcx{2, 1, 4, 8, 1, 1, planes + '\0'},
              "k<0000AA><00AA00><00AAAA><AA0000><AA00AA><AA5500><AAAAAA>"},
             {"4 planes, all black", Pcx{5, 1, 4, 8, 1, 1, planes + '\0'}, "kkkkkkkk"},
             {"8 planes", Pcx{5, 1, 8, 8, 1, 1, "55 33 00 00 00 00 00 00"_hex, {}, large}, "krgbkrgb", true},
             {"white", Pcx{2, 2, 1, 4, 1, 1, "1B"_hex, "100000 600000"_hex}, "<0000AA><55FFFF><FF55FF>w"},
             {"without white", Pcx{5, 2, 1, 4, 1, 1, "1B"_hex, "F00000 000000"_hex}, "w<00AA00><AA0000><AA5500>"},
             {"without colour burst", Pcx{0, 2, 1, 4, 1, 1, "1B"_hex, "000000 A00000"_hex}, "k<55FFFF><FF5555>w"},
             {"2 bits, 2 planes", Pcx{5, 2, 2, 4, 1, 1, "1B 50"_hex, primaries}, "cmby"},
             {"4 bits, window", Pcx{5, 4, 1, 3, 2, 2, "0120 3450"_hex, primaries, {}, 1, 100, 7}, "rgb/ycm"},
             {"palette not at the end", Pcx{5, 8, 1, 3, 1, 4, "010203 00"_hex, {}, large + "x"}, "rgb", true},
             {"grey", Pcx{5, 8, 1, 3, 1, 3, "0080 C1FF"_hex}, "k<808080>w"},
             {"long lines", Pcx{5, 8, 3, 1, 2, 3, "C1FF 0000 00 0000 00 0000  0000 77 000000 C1FF"_hex}, "r/b"},
             {"alpha", Pcx{5, 8, 4, 2, 1, 2, "C1FF 00 0000 0000 C1FF 80"_hex}, "r<7F7F7F>"},
             {"alpha forgotten", Pcx{5, 8, 4, 2, 1, 2, "C1FF 00 0000 0000 0000"_hex}, "rk"},
             {"not encoded", Pcx{5, 8, 1, 3, 2, 4, "01020377 C0010277"_hex, {}, large, 0}, "rgb/wrg", true},
             {"runs across planes and lines", Pcx{5, 8, 3, 2, 2, 2, "CCFF"_hex}, "ww/ww"},
             {"a run past the end", Pcx{5, 1, 1, 8, 1, 2, "C9FF"_hex}, "wwwwwwww"},
             {"a run of nothing", Pcx{5, 1, 1, 8, 1, 1, "C000 AA"_hex}, "wkwkwkwk"},
         }) {
        SCOPED_TRACE(name);
        EXPECT_EQ(lettersOf(decode(file)), colors);
        EXPECT_EQ(infoOf(pictures::inspectPicture(file, others)), infoOf(decode(file)));
        EXPECT_EQ(faultOf({decode, encode}, file), "");
        const std::string again = encode(decode(file), file);
        if (again.starts_with("BM")) {
            EXPECT_TRUE(again == file || file[30] == 1 || file[30] == 2);  // run lengths
        } else {
            EXPECT_EQ(again.substr(0, 128), file.substr(0, 128));
            EXPECT_EQ(again.ends_with(large), file.ends_with(large));
        }
        // Refused, or the same where only what no pixel needs is missing.
        for (std::size_t length = 0; !whole && length < file.size(); ++length) {
            const std::string part = file.substr(0, length);
            const int refusal = support::errorOf([&] { pictures::inspectPicture(part, others); });
            EXPECT_EQ(refusal, support::errorOf([&] { decode(part); }));
            EXPECT_TRUE(refusal == runtime::errInvalidPicture || lettersOf(decode(part)) == colors) << length;
        }
    }
    const auto resolution = [](const std::string& file) { return std::pair(decode(file).dpiX, decode(file).dpiY); };
    EXPECT_NEAR(resolution(Bmp{40, 3, 2, 24, pixels24}).first, 300, 0.02);
    EXPECT_NEAR(resolution(Bmp{40, 3, 2, 24, pixels24}).second, 150, 0.02);
    EXPECT_EQ(resolution(Pcx{5, 1, 1, 8, 1, 1, "AA"_hex}), std::pair(300.0, 150.0));
}

TEST(PictureFiles, WithHeadersThatLieAreRefused) {
    for (const auto& [name, file] : std::initializer_list<std::pair<const char*, std::string>>{
             {"height -2^31", Bmp{40, 1, -0x80000000LL, 8, pixels24}},
             {"30,000 x 30,000, run lengths", Bmp{40, 30000, 30000, 8, pixels24, five4, 1}},
             {"larger than the file", Bmp{40, 15000, 15000, 8, pixels24, five4}},
             {"3 bits", Bmp{40, 3, 2, 3, pixels24}},
             {"a header of 13 bytes", Bmp{13, 3, 2, 24, pixels24}},
             {"RLE8 of 4 bits", Bmp{40, 3, 2, 4, pixels4, five4, 1}},
             {"masks over each other", Bmp{40, 3, 2, 32, pixels24 + pixels24, {}, 3, {0xFF00, 0xFF, 0x1FF}}},
             {"a mask with a hole", Bmp{40, 3, 2, 32, pixels24 + pixels24, {}, 3, {0xFF0000, 0x8100, 0xFF}}},
             {"masks of more bits than a pixel", Bmp{40, 3, 2, 16, pixels24, {}, 3, {0xFF0000, 0xFF00, 0xFF}}},
             {"a run past the end of the row", Bmp{40, 3, 1, 8, "0501 0001"_hex, five4, 1}},
             {"a run past the last row", Bmp{40, 3, 1, 8, "0301 0000 0101 0001"_hex, five4, 1}},
             {"a step out of the picture", Bmp{40, 3, 1, 8, "0002 0004 0001"_hex, five4, 1}},
             {"sides below 0", Pcx{5, 1, 1, 0xFF00, 0xFF00, 1, "AA"_hex, {}, {}, 1, 0x200, 0x200}},
             {"larger than its runs can be", Pcx{5, 8, 1, 1000, 1000, 1000, std::string(1000, '\xFF')}},
             {"lines too short", Pcx{5, 8, 1, 8, 1, 7, "12345678"}},
             {"2 planes of 8 bits", Pcx{5, 8, 2, 8, 1, 8, "1234567812345678"}},
         }) {
        std::string detail;
        EXPECT_EQ(support::errorOf([&] { decode(file); }, &detail), runtime::errInvalidPicture) << name;
        EXPECT_NE(detail.find("Bild"), std::string::npos) << name << ": " << detail;
    }
    const std::string cut = Pcx{5, 8, 1, 3, 1, 4, "010203 00"_hex, {}, large};
    for (std::size_t missing = 1; missing < large.size(); ++missing) {
        EXPECT_EQ(support::errorOf([&] { decode(cut.substr(0, cut.size() - missing)); }), runtime::errInvalidPicture);
    }
    for (const std::string_view other : {"", "B", "\x89PNG", "\x0A\x01\x01\x08 and so on", "\x0A"}) {
        EXPECT_EQ(inverted(other), "andere");
    }
}

// The place of the pixels moves, and with it what the header knows to be behind them.
TEST(Bmp, CompletesAPaletteTooShortForItsPixels) {
    for (const bool runs : {false, true}) {
        const std::string pixels = runs ? "0004 01040304 0001"_hex : "01040304"_hex;
        std::string file = Bmp{124, 4, 1, 8, pixels, five4.substr(0, 12), runs ? 1U : 0U, {}, 3, 0, "profile"};
        const auto placeOfProfile = [](const std::string& content) { return number32(std::ssize(content) - 7 - 14); };
        file.replace(14 + 112, 4, placeOfProfile(file));
        EXPECT_EQ(lettersOf(decode(file)), "rkkk");
        EXPECT_EQ(faultOf({decode, encode}, file), "");
        const std::string once = inverted(file);
        EXPECT_TRUE(once.ends_with("profile"));
        EXPECT_EQ(once.substr(14 + 112, 4), placeOfProfile(once));
        EXPECT_EQ(once.substr(2, 4), number32(std::ssize(once)));
    }
}

TEST(Bmp, KeepsUnusedBitsAndAlpha) {
    const std::string file = Bmp{108, 2, 1, 32, "000000FF FF00FF40"_hex, {}, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}};
    platform::Picture picture = decode(file);
    EXPECT_EQ(lettersOf(picture), "k<FFBFFF>");
    picture.pixels[0] = 255;
    EXPECT_TRUE(encode(picture, file).ends_with("0000FFFF FF00FF40"_hex));
    EXPECT_TRUE(inverted(file).ends_with("FFFFFFFF 004000FF"_hex));
    EXPECT_TRUE(inverted(std::string(Bmp{40, 2, 1, 16, "0080 FF7F"_hex})).ends_with("FFFF 0000"_hex));
}

TEST(Bmp, WritesRunLengthsShorterThanPixels) {
    std::string pixels;
    for (int row = 0; row < 100; ++row) {
        pixels += "FF01 2D01 0005 010203020100 0704 0000"_hex;
    }
    const std::string file = Bmp{40, 312, 100, 8, pixels + "0001"_hex, five4, 1, {}, 5};
    EXPECT_EQ(faultOf({decode, encode}, file), "");
    EXPECT_LE(encode(decode(file), file).size(), file.size());
}

// A version that has no palette becomes the one that has, and nothing else changes in the header.
TEST(Pcx, WritesAPaletteWhereTheVersionHadNone) {
    const std::string sixteen = Pcx{3, 1, 4, 8, 1, 1, planes + "C1FF"_hex};
    std::string once = inverted(sixteen);
    EXPECT_EQ(once[1], 5);
    EXPECT_EQ(once.substr(2, 14) + once.substr(64), sixteen.substr(2, 14) + sixteen.substr(64));

    const std::string grey = Pcx{3, 8, 1, 3, 1, 3, "0080 C1FF"_hex};
    EXPECT_EQ(inverted(grey), std::string(Pcx{3, 8, 1, 3, 1, 3, "C1FF 7F 00"_hex}));
    platform::Picture red = decode(grey);
    red.palette[0x80] = {255, 0, 0};
    once = encode(red, grey);
    EXPECT_EQ(lettersOf(decode(once)), "krw");
    EXPECT_EQ(once[1], 5);

    // What a palette is taken for must not change with its colours.
    for (const std::string file : {Pcx{5, 1, 1, 8, 1, 1, "AA"_hex, "FFFFFF FFFF55"_hex + standard.substr(6)},
                                   Pcx{5, 2, 1, 4, 1, 1, "1B"_hex, "EFFFFF 5FFFFF FFFFFF FFFFFF"_hex},
                                   Pcx{2, 1, 4, 8, 1, 1, planes + '\0', std::string(48, '\xFF')}}) {
        EXPECT_EQ(faultOf({decode, encode}, file), "");
    }
}

TEST(Invert, ChangesPixelsOrPalette) {
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
