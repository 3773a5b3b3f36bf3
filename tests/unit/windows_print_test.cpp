// Pages drawn with GDI, on a bitmap instead of paper.
#include "runtime/error.h"
#include "unit/windows_sheet.h"

namespace platform_windows::print {

namespace {

TEST(DosCharacters, ControlCodesAndHighCodesHaveTheirGlyphs) {
    const DosCharacters characters = dosCharacters();
    const auto is = [&](unsigned code, wchar_t character) { return characters[code] == character; };
    EXPECT_TRUE(is(0, L' ') && is(1, L'☺') && is(12, L'♀') && is(20, L'¶') && is(27, L'←') && is(127, L'⌂'));
    for (wchar_t code = 32; code < 127; ++code) {
        EXPECT_TRUE(is(code, code));
    }
    if (::GetOEMCP() == 850 || ::GetOEMCP() == 437) {
        EXPECT_TRUE(is(0x84, L'ä') && is(0xE1, L'ß') && is(0xC4, L'─') && is(0xDB, L'█') && is(0xFF, L'\u00A0'));
    }
}

TEST(GdiFonts, HostFontCoversTheCodePageAndAdvancesByWholePixels) {
    Sheet sheet;
    for (const bool styled : {false, true}) {
        FontRequest font = courier(78);
        font.bold = font.italic = styled;
        const platform::FontFace face = sheet->setFont(font);
        EXPECT_EQ(face.name, "Courier New");
        EXPECT_EQ(face.charset, platform::charsetOem);
        EXPECT_EQ(sheet->textWidth("0123456789"), 470);
    }
    sheet->setFont(courier(83));
    EXPECT_EQ(sheet->textWidth("i\x01\xDB\xFF"), 4 * 50);
    sheet->setFont(courier(100'000'000));
    EXPECT_EQ(sheet->textWidth("x"), 60'009'766);
    EXPECT_EQ(sheet->textWidth(std::string(100, 'x')), INT_MAX);
    sheet->setFont(courier(-5));
    EXPECT_EQ(sheet->textWidth("xx"), 2);

    Sheet oblong(true, 1200);
    oblong->setFont(courier(83));
    EXPECT_EQ(oblong->textWidth("x"), 100);
}

TEST(GdiFonts, MissingFontIsReplacedByOneThatSaysItsName) {
    Sheet sheet;
    FontRequest font = courier(50);
    font.name = "Diese Schrift hat niemand, und ihr Name ist länger als erlaubt";
    const platform::FontFace face = sheet->setFont(font);
    EXPECT_FALSE(face.name.empty());
    EXPECT_NE(face.name, font.name);
    EXPECT_GT(sheet->textWidth("x"), 0);
}

TEST(GdiText, WithoutFontIsAnError) {
    Sheet sheet;
    EXPECT_THROW(sheet->textWidth("x"), runtime::Error);
    EXPECT_THROW(sheet.text(0, 0, "x"), runtime::Error);
}

// On this device the widths are twice what the bitmap's font would have by itself.
TEST(GdiText, EveryCharacterStandsWhereTheWidthsSay) {
    constexpr std::string_view text = "H\x84\xC4 |\x01";
    constexpr int advance = 94;
    Sheet run(true, 1200);
    run->setFont(courier(78));
    run.text(5, 30, text);
    Sheet single(true, 1200);
    single->setFont(courier(78));
    for (std::size_t index = 0; index < text.size(); ++index) {
        single.text(5 + static_cast<int>(index) * advance, 30, text.substr(index, 1));
    }
    const auto image = run.drawn();
    EXPECT_EQ(image, single.drawn());
    EXPECT_GT(Sheet::inkOf(image).right, 5 + 5 * advance);
}

TEST(GdiText, BaselineIsTheFontsAscentBelowTheTop) {
    Sheet sheet;
    sheet->setFont(courier(100));
    sheet.text(0, 40, "H");
    const Box ink = Sheet::inkOf(sheet.drawn());
    EXPECT_NEAR(ink.bottom + 1, 40 + 83, 1);
    EXPECT_NEAR(ink.bottom + 1 - ink.top, 66, 3);
}

TEST(GdiText, UnderlineSpansTheRunWithItsBlanks) {
    Sheet sheet;
    FontRequest font = courier(100);
    font.underline = true;
    sheet->setFont(font);
    sheet.text(30, 40, " H  ", {255, 0, 0});
    const auto image = sheet.drawn();
    const Box ink = Sheet::inkOf(image);
    EXPECT_EQ(ink.left, 30);
    EXPECT_EQ(ink.right, 30 + 4 * 60 - 1);
    EXPECT_GT(ink.bottom, 40 + 83);
    EXPECT_LT(ink.bottom, 40 + 83 + 30);
    for (int x = ink.left; x <= ink.right; ++x) {
        ASSERT_EQ(Sheet::at(image, x, ink.bottom), 0xFF0000U);
    }
}

// Where the ink of text is that is turned about a point, from where it is with no turn.
Box turnedBox(const Box& box, int x, int y, int rotation) {
    const platform::drawing::Turn turn(rotation);
    const platform::drawing::Area area = turn.toPage(
        {x, y}, platform::drawing::Area{{box.left - x, box.right + 1 - x}, {box.top - y, box.bottom + 1 - y}});
    return {static_cast<int>(area.across.start), static_cast<int>(area.down.start),
            static_cast<int>(area.across.end) - 1, static_cast<int>(area.down.end) - 1};
}

TEST(GdiText, IsTurnedAboutThePointItIsDrawnAt) {
    constexpr int x = 300;
    constexpr int y = 150;
    const auto draw = [](int rotation, int emHeight, bool underline, int dpiX) {
        Sheet sheet(true, dpiX);
        FontRequest font = courier(emHeight);
        font.underline = underline;
        font.rotation = rotation;
        sheet->setFont(font);
        sheet.text(x, y, "HL");
        return Sheet::inkOf(sheet.drawn());
    };
    const Box upright = draw(0, 60, false, 600);
    const Box underlined = draw(0, 60, true, 600);
    for (const int rotation : {90, 180, 270}) {
        const Box ink = draw(rotation, 60, false, 600);
        const Box expected = turnedBox(upright, x, y, rotation);
        EXPECT_NEAR(ink.left, expected.left, 1) << rotation;
        EXPECT_NEAR(ink.top, expected.top, 1) << rotation;
        EXPECT_NEAR(ink.right, expected.right, 1) << rotation;
        EXPECT_NEAR(ink.bottom, expected.bottom, 1) << rotation;
        EXPECT_EQ(draw(rotation, 60, true, 600), turnedBox(underlined, x, y, rotation));
    }
    // With twice the pixels across, twice the pixels from line to line and as many along.
    const Box oblong = draw(90, 60, false, 1200);
    const Box expected = turnedBox(upright, x, y, 90);
    EXPECT_NEAR(oblong.top, expected.top, 2);
    EXPECT_NEAR(oblong.bottom, expected.bottom, 2);
    EXPECT_NEAR(oblong.left - x, 2 * (expected.left - x), 2);
    EXPECT_NEAR(oblong.right - x, 2 * (expected.right - x), 2);
}

// A page that uses more fonts than are kept at a time still has every size right, the first one too.
TEST(GdiText, ManySizesOnOnePage) {
    const auto draw = [](Sheet& sheet, int em) {
        sheet->setFont(courier(em));
        sheet.text((em - 20) * 6, 100, "x");
    };
    Sheet one;
    for (int em = 20; em < 100; ++em) {
        draw(one, em);
    }
    draw(one, 20);
    const auto image = one.drawn();
    for (const int em : {20, 57, 99}) {
        Sheet alone;
        draw(alone, em);
        const auto expected = alone.drawn();
        const Box ink = Sheet::inkOf(expected);
        for (int y = ink.top; y <= ink.bottom; ++y) {
            if (Sheet::at(expected, ink.left, y) != white) {
                EXPECT_NE(Sheet::at(image, ink.left, y), white) << em;
            }
        }
    }
}

TEST(GdiClipping, TextFarOutsideIsCutToTheSheet) {
    std::string endless(1'000'000, 'x');
    const int advance = 60;
    Sheet distant;
    distant->setFont(courier(100));
    distant.text(-500'000 * advance + 7, 50, endless);
    Sheet close;
    close->setFont(courier(100));
    close.text(7 - advance, 50, std::string(14, 'x'));
    EXPECT_EQ(distant.drawn(), close.drawn());

    Sheet outside;
    outside->setFont(courier(100));
    for (const int place : {INT_MIN, -sheetWidth, sheetWidth, INT_MAX}) {
        outside.text(place, 50, "xxxx");
        outside.text(50, place, "xxxx");
    }
    EXPECT_EQ(Sheet::inkOf(outside.drawn()), Box());

    // Advances of no pixels at all.
    FontRequest tiny = courier(1);
    tiny.name = "Arial";
    outside->setFont(tiny);
    outside.text(0, 0, std::string(1'000'000, 'i'));
    EXPECT_EQ(outside->endPage(), DWORD{ERROR_SUCCESS});
}

TEST(GdiRectangles, FillExactlyTheirPixelsInTheirOrder) {
    Sheet sheet;
    sheet->fillRectangle(10, 20, 30, 40, {1, 2, 3});
    sheet->fillRectangle(12, 22, 1, 1, {255, 128, 0});
    sheet->fillRectangle(100, 100, 0, 5, black);
    sheet->fillRectangle(100, 100, 5, -5, black);
    const auto image = sheet.drawn();
    EXPECT_EQ(Sheet::inkOf(image), (Box{10, 20, 39, 59}));
    EXPECT_EQ(Sheet::at(image, 39, 59), 0x010203U);
    EXPECT_EQ(Sheet::at(image, 12, 22), 0xFF8000U);
    EXPECT_EQ(Sheet::at(image, 13, 22), 0x010203U);

    Sheet full;
    full->fillRectangle(-1'000'000'000, -1'000'000'000, INT_MAX, 1'000'000'005, black);
    full->fillRectangle(INT_MIN, -1000, INT_MAX, INT_MAX, black);
    full->fillRectangle(INT_MAX, INT_MAX, INT_MAX, INT_MAX, black);
    const auto large = full.drawn();
    EXPECT_EQ(Sheet::inkOf(large), (Box{-marginX, -marginY, sheetWidth - marginX - 1, sheetHeight - marginY - 1}));
    EXPECT_EQ(Sheet::at(large, -1, 5), white);
    EXPECT_EQ(Sheet::at(large, -2, 5), 0U);
    EXPECT_EQ(Sheet::at(large, -1, 4), 0U);
}

TEST(GdiPages, MonochromeTurnsColoursIntoGreys) {
    Sheet sheet(false);
    sheet->fillRectangle(0, 0, 5, 5, {255, 0, 0});
    sheet->fillRectangle(10, 0, 5, 5, {255, 255, 0});
    const auto image = sheet.drawn();
    EXPECT_EQ(Sheet::at(image, 2, 2), 0x4C4C4CU);
    EXPECT_EQ(Sheet::at(image, 12, 2), 0xE2E2E2U);

    for (const int bits : {4, 24}) {
        const auto picture = pictureOf(bits);
        Sheet page(false);
        page->drawPicture(picture, 0, 0, picture->width, picture->height);
        const auto grey = page.drawn();
        for (int x = 0; x < picture->width; ++x) {
            const std::uint32_t color = pixelAt(*picture, x, 0);
            const auto luma = (299 * (color >> 16) + 587 * (color >> 8 & 0xFF) + 114 * (color & 0xFF) + 500) / 1000;
            EXPECT_EQ(Sheet::at(grey, x, 0), luma * 0x010101) << bits << " bits";
        }
    }
}

}  // namespace

}  // namespace platform_windows::print
