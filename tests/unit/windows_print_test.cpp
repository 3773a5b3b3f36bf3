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

// Where the ink of text is that is turned about a point, from where it is with no turn.
Box turnedBox(const Box& box, int x, int y, int rotation) {
    const platform::Turn turn(rotation);
    const platform::Area area =
        turn.toPage({x, y}, platform::Area{{box.left - x, box.right + 1 - x}, {box.top - y, box.bottom + 1 - y}});
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

// Pixels of all depths: the last row is black, the others have all numbers that there are.
std::shared_ptr<platform::Picture> pictureOf(int bitsPerPixel) {
    auto picture = std::make_shared<platform::Picture>(platform::makePicture(13, 5, bitsPerPixel));
    for (std::size_t index = 1; index < picture->palette.size(); ++index) {
        picture->palette[index] = {static_cast<std::uint8_t>(200 - index), static_cast<std::uint8_t>(index * 3), 99};
    }
    for (std::size_t at = 0; at < picture->stride() * 4; ++at) {
        picture->pixels[at] = static_cast<std::uint8_t>(at * 37 + 1);
    }
    return picture;
}

std::uint32_t pixelAt(const platform::Picture& picture, int x, int y) {
    const std::uint8_t* row = picture.pixels.data() + picture.stride() * static_cast<std::size_t>(y);
    Color color;
    if (picture.bitsPerPixel == 24) {
        color = {row[x * 3], row[x * 3 + 1], row[x * 3 + 2]};
    } else {
        const int bit = x * picture.bitsPerPixel;
        const int number = row[bit / 8] >> (8 - picture.bitsPerPixel - bit % 8) & ((1 << picture.bitsPerPixel) - 1);
        color = picture.palette[static_cast<std::size_t>(number)];
    }
    return static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
}

TEST(GdiPictures, FillTheirBoxAndKeepTheirColours) {
    constexpr int scale = 3;
    for (const int bits : {1, 2, 4, 8, 24}) {
        const auto picture = pictureOf(bits);
        const int width = picture->width * scale;
        const int height = picture->height * scale;
        Sheet sheet;
        sheet->drawPicture(picture, 10, 20, width, height);
        sheet->drawPicture(picture, 100 + width, 20 + height, -width, -height);
        sheet->drawPicture(picture, 300, 20, 0, height);
        sheet->drawPicture(picture, sheetWidth, 20, width, height);
        const auto image = sheet.drawn();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const std::uint32_t expected = pixelAt(*picture, x / scale, y / scale);
                ASSERT_EQ(Sheet::at(image, 10 + x, 20 + y), expected) << bits << " bits, " << x << ',' << y;
                ASSERT_EQ(Sheet::at(image, 100 + width - 1 - x, 20 + height - 1 - y), expected) << bits << " bits";
            }
        }
        const auto inked = static_cast<int>(image.size() - std::count(image.begin(), image.end(), white));
        EXPECT_EQ(inked, 2 * width * height);
    }
}

TEST(GdiPictures, ThinLinesOfTwoColoursStayWhenShrunk) {
    for (const bool blackFirst : {false, true}) {
        auto picture = std::make_shared<platform::Picture>(platform::makePicture(600, 600, 1));
        picture->palette[blackFirst ? 1 : 0] = {255, 255, 255};
        std::fill(picture->pixels.begin(), picture->pixels.end(), blackFirst ? 0xFF : 0);
        for (std::size_t row = 0; row < 600; ++row) {
            picture->pixels[row * picture->stride() + 30] ^= 0x10;  // the column 243
        }
        Sheet sheet;
        sheet->drawPicture(picture, 0, 0, 77, 77);
        EXPECT_EQ(Sheet::inkOf(sheet.drawn()), (Box{31, 0, 31, 76}));
    }
}

// Enlarged so that a pixel is larger than any sheet, and shown where four of them meet.
TEST(GdiPictures, FarBeyondTheSheetAreCut) {
    const auto picture = pictureOf(8);
    constexpr int scale = 15'000'000;
    for (const bool mirrored : {false, true}) {
        Sheet sheet;
        const int sign = mirrored ? -1 : 1;
        sheet->drawPicture(picture, 300 - sign * 7 * scale, 100 - sign * 2 * scale, sign * 13 * scale,
                           sign * 5 * scale);
        const auto image = sheet.drawn();
        EXPECT_EQ(Sheet::at(image, 300 - sign * 10, 100 - sign * 10), pixelAt(*picture, 6, 1));
        EXPECT_EQ(Sheet::at(image, 300 + sign * 10, 100 - sign * 10), pixelAt(*picture, 7, 1));
        EXPECT_EQ(Sheet::at(image, 300 - sign * 10, 100 + sign * 10), pixelAt(*picture, 6, 2));
        EXPECT_EQ(Sheet::at(image, 300 + sign * 10, 100 + sign * 10), pixelAt(*picture, 7, 2));
        EXPECT_EQ(Sheet::inkOf(image), (Box{-marginX, -marginY, sheetWidth - marginX - 1, sheetHeight - marginY - 1}));
    }
    Sheet sheet;
    for (const int distant : {INT_MIN, INT_MAX}) {
        sheet->drawPicture(picture, distant, 0, 10, 10);
        sheet->drawPicture(picture, 0, distant, INT_MAX, INT_MIN);
        sheet->drawPicture(picture, 0, 0, distant, distant);
    }
    EXPECT_EQ(sheet->play(), DWORD{ERROR_SUCCESS});
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
