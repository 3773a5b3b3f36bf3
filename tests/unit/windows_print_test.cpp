// Pages drawn with GDI, on a bitmap instead of paper, and the spooler where there is no such printer.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/windows/print/gdi_surface.h"
#include "platform/windows/print/page_mode.h"
#include "platform/windows/print/print_handles.h"
#include "platform/windows/print/spooler_error.h"
#include "platform/windows/print/windows_spooler.h"
#include "runtime/error.h"

namespace platform_windows::print {

namespace {

using platform::Color;
using platform::FontRequest;
using platform::PageOption;
using platform::TextRole;

constexpr int sheetWidth = 700;
constexpr int sheetHeight = 300;
constexpr int marginX = 20;
constexpr int marginY = 10;
constexpr Color black{0, 0, 0};
constexpr std::uint32_t white = 0xFFFFFF;

struct BitmapKind {
    using Handle = HBITMAP;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::DeleteObject(handle); }
};

struct Box {
    int left = INT_MAX;
    int top = INT_MAX;
    int right = -1;  // the last column with ink
    int bottom = -1;
    bool operator==(const Box&) const = default;
};

void PrintTo(const Box& box, std::ostream* out) {
    *out << box.left << ',' << box.top << " to " << box.right << ',' << box.bottom;
}

// A sheet of paper: a white bitmap, and a surface whose printable area lies within.
class Sheet {
public:
    explicit Sheet(bool color = true, int dpiX = 600) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), sheetWidth, -sheetHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        bitmap_ = Owner<BitmapKind>(::CreateDIBSection(context_.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        pixels_ = static_cast<std::uint32_t*>(bits);
        selection_.emplace(context_.get(), bitmap_.get());
        std::fill_n(pixels_, sheetWidth * sheetHeight, white);
        ::SetViewportOrgEx(context_.get(), marginX, marginY, nullptr);
        surface_.emplace(context_.get());
        platform::DeviceCapabilities device;
        device.logPixelsX = dpiX;
        device.logPixelsY = 600;
        device.physicalWidth = sheetWidth;
        device.physicalHeight = sheetHeight;
        device.physicalOffsetX = marginX;
        device.physicalOffsetY = marginY;
        surface_->setPage(device, color);
    }

    GdiSurface* operator->() { return &*surface_; }

    void text(int x, int y, std::string_view bytes, Color color = black) {
        surface_->drawText(x, y, bytes, color, TextRole::content);
    }

    // Plays the page; coordinates are then those of the printable area.
    std::vector<std::uint32_t> drawn() {
        EXPECT_EQ(surface_->play(), DWORD{ERROR_SUCCESS});
        ::GdiFlush();
        std::vector<std::uint32_t> result(pixels_, pixels_ + sheetWidth * sheetHeight);
        for (std::uint32_t& pixel : result) {
            pixel &= white;
        }
        return result;
    }

    static std::uint32_t at(const std::vector<std::uint32_t>& image, int x, int y) {
        return image[static_cast<std::size_t>((y + marginY) * sheetWidth + x + marginX)];
    }

    static Box inkOf(const std::vector<std::uint32_t>& image) {
        Box box;
        for (int y = -marginY; y < sheetHeight - marginY; ++y) {
            for (int x = -marginX; x < sheetWidth - marginX; ++x) {
                if (at(image, x, y) != white) {
                    box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                           std::max(box.bottom, y)};
                }
            }
        }
        return box;
    }

private:
    DeviceContext context_{::CreateCompatibleDC(nullptr)};
    Owner<BitmapKind> bitmap_;
    std::uint32_t* pixels_ = nullptr;
    std::optional<Selection> selection_;
    std::optional<GdiSurface> surface_;
};

FontRequest courier(int emHeight) {
    FontRequest font;
    font.name = "Courier New";
    font.emHeight = emHeight;
    return font;
}

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
    EXPECT_EQ(outside->play(), DWORD{ERROR_SUCCESS});
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
}

TEST(GdiPages, NewPageForgetsTheOneBefore) {
    Sheet sheet;
    sheet->setFont(courier(50));
    sheet.text(0, 0, "gone");
    sheet->fillRectangle(0, 0, 100, 100, black);
    sheet->begin();
    sheet->fillRectangle(200, 100, 1, 1, black);
    EXPECT_EQ(Sheet::inkOf(sheet.drawn()), (Box{200, 100, 200, 100}));
}

TEST(PageMode, RequestedSizeReplacesMeasuresAndFormName) {
    PageMode own(10);
    own.record()->dmFields = DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH | DM_FORMNAME | DM_ORIENTATION;
    own.record()->dmPaperSize = 256;
    own.record()->dmPaperLength = 1234;
    PageMode mode = own;
    mode.request(PageOption::paperSize, 9);
    EXPECT_EQ(mode.record()->dmFields, DWORD{DM_PAPERSIZE | DM_ORIENTATION});
    EXPECT_EQ(mode.value(PageOption::paperSize), 9);
    mode.takePaperSize(own);
    EXPECT_EQ(mode.record()->dmFields, own.record()->dmFields);
    EXPECT_EQ(mode.record()->dmPaperLength, 1234);

    EXPECT_EQ(mode.value(PageOption::paperBin), 0);
    EXPECT_EQ(mode.value(PageOption::colorMode), DMCOLOR_COLOR);
    mode.request(PageOption::paperBin, -32768);
    EXPECT_EQ(mode.value(PageOption::paperBin), -32768);
}

TEST(Spooler, UnknownPrinterIsAnErrorThatNamesItAndSaysWhatToDo) {
    WindowsSpooler spooler;
    const std::string unknown = "Diesen Drücker gibt es nicht";
    for (const std::string& name : {unknown, std::string(), std::string(3000, 'x'), std::string("\\\\.\\nichts")}) {
        EXPECT_THROW(spooler.printer(name), platform::SpoolerError);
        EXPECT_THROW(spooler.jobCount(name), platform::SpoolerError);
        EXPECT_THROW(spooler.paperBins(name), platform::SpoolerError);
        EXPECT_THROW(spooler.canAdminister(name), platform::SpoolerError);
        EXPECT_THROW(spooler.purge(name), platform::SpoolerError);
        EXPECT_THROW(spooler.setDefaultPrinter(name), platform::SpoolerError);
    }
    try {
        spooler.openDocument(unknown, "Titel");
        FAIL();
    } catch (const platform::SpoolerError& error) {
        EXPECT_EQ(error.number(), runtime::errPrinter);
        EXPECT_NE(error.code(), 0U);
        EXPECT_NE(error.detail().find(unknown), std::string::npos);
        EXPECT_NE(error.detail().find(std::to_string(error.code())), std::string::npos);
        EXPECT_NE(error.detail().find("Bitte"), std::string::npos);
    }
    EXPECT_EQ(spooler.hasPrinters(), !spooler.printerNames().empty());
    EXPECT_FALSE(spooler.errorText(ERROR_ACCESS_DENIED).empty());
    EXPECT_TRUE(spooler.errorText(0).empty());
}

TEST(SpoolerErrors, FullDiskIsAnErrorOfItsOwn) {
    try {
        throwDocumentFailure(ERROR_DISK_FULL, "Laser");
    } catch (const runtime::Error& error) {
        EXPECT_EQ(error.number(), runtime::errDiskFull);
        EXPECT_EQ(dynamic_cast<const platform::SpoolerError*>(&error), nullptr);
    }
    EXPECT_THROW(throwDocumentFailure(ERROR_PRINT_CANCELLED, "Laser"), platform::SpoolerError);
}

}  // namespace

}  // namespace platform_windows::print
