// Pages drawn with GDI, on a bitmap instead of paper. What surfaces of all systems do is tested in
// pixel_surface_test.cpp.
#include "unit/windows_sheet.h"

#include <cmath>

namespace platform_windows::print {

namespace {

TEST(DosCharacters, ControlCodesAndHighCodesHaveTheirGlyphs) {
    const gdi::DosCharacters characters = gdi::dosCharacters();
    const auto is = [&](unsigned code, wchar_t character) { return characters[code] == character; };
    EXPECT_TRUE(is(0, L' ') && is(1, L'☺') && is(12, L'♀') && is(20, L'¶') && is(27, L'←') && is(127, L'⌂'));
    EXPECT_TRUE(is(' ', L' ') && is('A', L'A') && is('~', L'~'));
    if (::GetOEMCP() == 850 || ::GetOEMCP() == 437) {
        EXPECT_TRUE(is(0x84, L'ä') && is(0xE1, L'ß') && is(0xC4, L'─') && is(0xDB, L'█') && is(0xFF, L'\u00A0'));
    }
}

TEST(GdiFonts, HostFontCoversTheCodePageAndAMissingOneIsReplacedByOneThatSaysItsName) {
    Sheet sheet;
    for (const bool styled : {false, true}) {
        const auto face = sheet->setFont({"Courier New", platform::charsetOem, 83, styled, styled});
        EXPECT_EQ(face.name, "Courier New");
        EXPECT_EQ(face.charset, platform::charsetOem);
        EXPECT_EQ(sheet->textWidth("i\x01\xDB\xFF"), 4 * 50);
    }
    const std::string missing = "Diese Schrift hat niemand, und ihr Name ist länger als erlaubt";
    const std::string found = sheet.font(50, 0, false, missing).name;
    EXPECT_FALSE(found.empty());
    EXPECT_NE(found, missing);
    EXPECT_GT(sheet->textWidth("x"), 0);
}

// On this device the widths are twice what the bitmap's font would have by itself.
TEST(GdiText, EveryCharacterStandsWhereTheWidthsSay) {
    constexpr std::string_view text = "H\x84\xC4 |\x01";
    constexpr int advance = 94;
    Sheet run(true, 1200);
    run.font(78);
    run.text(5, 30, text);
    Sheet single(true, 1200);
    single.font(78);
    for (std::size_t index = 0; index < text.size(); ++index) {
        single.text(5 + static_cast<int>(index) * advance, 30, text.substr(index, 1));
    }
    const Image image = run.drawn();
    EXPECT_EQ(image, single.drawn());
    EXPECT_GT(image.ink().right, 5 + 5 * advance);
}

// Where the ink is: that of upright text turned, which stands on its baseline; oblong pixels stretch it across.
TEST(GdiText, IsTurnedAboutThePointItIsDrawnAtAndHasItsShapeOnPixelsThatAreNotSquare) {
    const auto draw = [](int rotation, int dpiX, Pixels pixels = Pixels::device) {
        const int origin = pixels == Pixels::paper ? 300 * dpiX / 600 : 300;
        Sheet sheet(true, dpiX, pixels);
        sheet.font(60, rotation);
        sheet.text(origin, 150, "HL", {255, 0, 0});
        const Image image = sheet.drawn();
        const Box ink = image.ink();
        EXPECT_EQ(image.at(ink.right, ink.bottom) & 0xFF0000, 0xFF0000U);
        return Box{ink.left - 300, ink.top - 150, ink.right - 300, ink.bottom - 150};
    };
    Box expected = draw(0, 600);
    EXPECT_NEAR(expected.bottom + 1, 50, 1);
    EXPECT_NEAR(expected.bottom + 1 - expected.top, 40, 2);
    for (const int rotation : {0, 90, 180, 270}) {
        EXPECT_TRUE(isNear(draw(rotation, 600), expected, 1)) << rotation;
        for (const int dpiX : {300, 1200}) {
            const Box oblong{expected.left * dpiX / 600, expected.top, expected.right * dpiX / 600, expected.bottom};
            EXPECT_TRUE(isNear(draw(rotation, dpiX), oblong, 2)) << rotation << ", " << dpiX;
            EXPECT_TRUE(isNear(draw(rotation, dpiX, Pixels::paper), expected, 2)) << rotation << ", " << dpiX;
        }
        expected = {expected.top, -expected.right - 1, expected.bottom, -expected.left - 1};
    }
}

// What a device does to the widths of its fonts has no say in them.
TEST(GdiText, IsAsWideAsThePixelsAskFor) {
    for (const int dpiX : {300, 600, 1200, 2400}) {
        for (const Pixels pixels : {Pixels::device, Pixels::paper}) {
            Sheet sheet(true, dpiX, pixels);
            for (const int em : {13, 30, 83}) {
                sheet.font(em);
                const int advance = static_cast<int>(std::floor(em * 1229.0 / 2048 * dpiX / 600 + 0.5));
                EXPECT_EQ(sheet->textWidth("i\x01\xDB\xFF"), 4 * advance) << em << ", " << dpiX;
            }
        }
    }
}

// Pages that use more fonts than are kept at a time are the same in whatever order they use them.
TEST(GdiText, ManySizesOnOnePage) {
    Sheet growing;
    Sheet shrinking;
    const auto draw = [](Sheet& sheet, int em) {
        sheet.font(em);
        sheet.text((em - 20) / 6 * 45, (em - 20) % 6 * 45, "x");
    };
    for (int em = 20; em < 62; ++em) {
        draw(growing, em);
        draw(shrinking, 81 - em);
    }
    draw(growing, 20);
    draw(shrinking, 20);
    EXPECT_EQ(growing.drawn(), shrinking.drawn());
}

TEST(GdiPages, RectanglesFillExactlyTheirPixelsInTheirOrder) {
    Sheet sheet;
    sheet->fillRectangle(10, 20, 30, 40, {1, 2, 3});
    sheet->fillRectangle(12, 22, 1, 1, {255, 128, 0});
    const Image image = sheet.drawn();
    EXPECT_EQ(image.ink(), (Box{10, 20, 39, 59}));
    EXPECT_EQ(image.at(39, 59), 0x010203U);
    EXPECT_EQ(image.at(12, 22), 0xFF8000U);
    EXPECT_EQ(image.at(13, 22), 0x010203U);
}

TEST(GdiPictures, FillTheirBoxAndKeepTheirColoursOrAreGrey) {
    constexpr int scale = 3;
    for (const auto& [bits, color] :
         {std::pair(1, true), {2, true}, {4, true}, {8, true}, {24, true}, {4, false}, {24, false}}) {
        const auto picture = pictureOf(bits);
        const int width = picture->width * scale;
        const int height = picture->height * scale;
        Sheet sheet(color);
        sheet->drawPicture(picture, 10, 20, width, height);
        sheet->drawPicture(picture, 100 + width, 20 + height, -width, -height);
        const Image image = sheet.drawn();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const platform::Color own = support::colorAt(*picture, x / scale, y / scale);
                const std::uint32_t expected = numberOf(color ? own : platform::drawing::greyOf(own));
                ASSERT_EQ(image.at(10 + x, 20 + y), expected) << bits << " bits, " << x << ',' << y;
                ASSERT_EQ(image.at(100 + width - 1 - x, 20 + height - 1 - y), expected) << bits << " bits";
            }
        }
        EXPECT_EQ(std::ssize(image.pixels) - std::count(image.pixels.begin(), image.pixels.end(), white),
                  2 * width * height);
    }
}

TEST(GdiPictures, ThinLinesOfTwoColoursStayWhenShrunk) {
    for (const bool blackFirst : {false, true}) {
        auto picture = std::make_shared<platform::Picture>(pictures::makePicture(600, 600, 1));
        picture->palette[blackFirst ? 1 : 0] = {255, 255, 255};
        std::fill(picture->pixels.begin(), picture->pixels.end(), blackFirst ? 0xFF : 0);
        for (std::size_t row = 0; row < 600; ++row) {
            picture->pixels[row * picture->stride() + 30] ^= 0x10;  // the column 243
        }
        Sheet sheet;
        sheet->drawPicture(picture, 0, 0, 77, 77);
        EXPECT_EQ(sheet.drawn().ink(), (Box{31, 0, 31, 76}));
    }
}

// Enlarged so that a pixel is larger than any sheet, and shown where four of them meet.
TEST(GdiPictures, FarBeyondTheSheetAreCut) {
    const auto picture = pictureOf(8);
    constexpr int scale = 15'000'000;
    for (const int sign : {1, -1}) {
        Sheet sheet;
        sheet->drawPicture(picture, 300 - sign * 7 * scale, 100 - sign * 2 * scale, sign * 13 * scale,
                           sign * 5 * scale);
        const Image image = sheet.drawn();
        for (const int right : {-1, 1}) {
            for (const int down : {-1, 1}) {
                EXPECT_EQ(image.at(300 + sign * right * 10, 100 + sign * down * 10),
                          numberOf(support::colorAt(*picture, right > 0 ? 7 : 6, down > 0 ? 2 : 1)));
            }
        }
        EXPECT_EQ(image.ink(), (Box{-marginX, -marginY, sheetWidth - marginX - 1, sheetHeight - marginY - 1}));
    }
    Sheet sheet;
    for (const int distant : {INT_MIN, INT_MAX}) {
        sheet->drawPicture(picture, 0, distant, INT_MAX, INT_MIN);
        sheet->drawPicture(picture, 0, 0, distant, distant);
    }
    sheet.drawn();
}

}  // namespace

}  // namespace platform_windows::print
