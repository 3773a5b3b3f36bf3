// Pages as the screen shows them, against the same pages in the printer's own pixels.
#include <cmath>

#include "platform/drawing/page_recording.h"
#include "platform/windows/gdi/sheet_surface.h"
#include "unit/windows_sheet.h"

namespace platform_windows::print {

namespace {

using platform::drawing::PageRecording;

struct Look {
    double scaleX = 1;
    double scaleY = 1;
    int dpiX = 600;
    double left = 0;  // of the printable area
    double top = 0;
    bool color = true;
};

// What a page looks like on a screen that holds the whole sheet; its pixels begin where those of the sheet do.
class Screen {
public:
    Screen(const Look& look, const PageRecording& page, int width = 0, int height = 0) : look_(look) {
        width_ = width > 0 ? width : static_cast<int>(std::ceil(sheetWidth * look.scaleX));
        height_ = height > 0 ? height : static_cast<int>(std::ceil(sheetHeight * look.scaleY));
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), width_, -height_, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        ::SelectObject(context_.get(), ::CreateDIBSection(context_.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        pixels_ = static_cast<std::uint32_t*>(bits);
        draw(page);
    }

    void draw(const PageRecording& page) {
        std::fill_n(pixels_, width_ * height_, white);
        const platform::SheetView view{{0, 0, look_.dpiX, 600, sheetWidth, sheetHeight, marginX, marginY},
                                       look_.color,
                                       look_.left,
                                       look_.top,
                                       look_.scaleX,
                                       look_.scaleY};
        surface_.beginSheet(context_.get(), {pixels_, width_, height_, width_}, view);
        page.play(surface_);
        surface_.endSheet();
    }

    std::uint32_t at(int x, int y) const { return pixels_[y * width_ + x] & white; }
    HDC context() const { return context_.get(); }

    double darkness(int x, int y) const { return (255 - (at(x, y) >> 8 & 0xFF)) / 255.0; }
    double darkness() const {
        double sum = 0;
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                sum += darkness(x, y);
            }
        }
        return sum;
    }
    // Pixels of which a quarter is black.
    Box ink() const {
        Box box;
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                if (darkness(x, y) > 0.25) {
                    box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                           std::max(box.bottom, y)};
                }
            }
        }
        return box;
    }

private:
    gdi::DeviceContext context_{::CreateCompatibleDC(nullptr)};
    Look look_;
    int width_ = 0;
    int height_ = 0;
    std::uint32_t* pixels_ = nullptr;
    gdi::SheetSurface surface_;
};

Look onWholeSheet(double scaleX, double scaleY, int dpiX = 600) {
    return {scaleX, scaleY, dpiX, marginX * scaleX, marginY * scaleY};
}

PageRecording textPage(int emHeight, int rotation, int x, int y, std::string_view text) {
    PageRecording page;
    page.addFont({"Courier New", platform::charsetOem, emHeight, false, false, false, rotation});
    page.addText(x, y, text, {}, platform::TextRole::content);
    return page;
}

// The pixels of the screen on which some of the printer's are.
Box scaled(const Box& printed, const Look& look) {
    const auto first = [](int place, double start, double scale) {
        return static_cast<int>(std::floor(start + place * scale));
    };
    const auto last = [](int place, double start, double scale) {
        return static_cast<int>(std::ceil(start + (place + 1) * scale)) - 1;
    };
    return {first(printed.left, look.left, look.scaleX), first(printed.top, look.top, look.scaleY),
            last(printed.right, look.left, look.scaleX), last(printed.bottom, look.top, look.scaleY)};
}

TEST(PreviewText, StandsWhereThePrinterPutsIt) {
    for (const Look& look :
         {onWholeSheet(0.13, 0.13), onWholeSheet(0.16, 0.16), onWholeSheet(0.42, 0.42), onWholeSheet(1, 1),
          onWholeSheet(2.3, 2.3), onWholeSheet(0.5, 0.7), onWholeSheet(0.2, 0.4, 1200), onWholeSheet(0.8, 0.4, 300)}) {
        for (const int rotation : {0, 90, 180, 270}) {
            // Alone, and behind others of which none may add its rounding to that of the next.
            for (const std::string_view text : {"H", "         H"}) {
                const std::string_view shown = rotation % 180 != 0 ? text.substr(text.size() / 2) : text;
                const int x = rotation == 180 ? 640 : 100;
                const int y = rotation == 90 ? 250 : 40;
                Sheet printer(true, look.dpiX);
                printer.font(50, rotation);
                printer.text(x, y, shown);
                const Screen screen(look, textPage(50, rotation, x, y, shown));
                const Box expected = scaled(printer.drawn().ink(), look);
                const Box ink = screen.ink();
                EXPECT_TRUE(isNear(ink, expected, 1))
                    << look.scaleX << " x " << look.scaleY << ", " << rotation << ", " << shown << ": " << ink.left
                    << ' ' << ink.top << ' ' << ink.right << ' ' << ink.bottom << " instead of " << expected.left << ' '
                    << expected.top << ' ' << expected.right << ' ' << expected.bottom;
            }
        }
    }
}

// What no pixel of a window shows is skipped, however far away it is. The second of two full blocks is looked at.
TEST(PreviewText, IsDrawnFarFromThePagesBeginningAtAnyZoom) {
    PageRecording page = textPage(40, 0, 0, 0, "unsichtbar");
    page.addText(500, 200, "\xDB\xDB", {0, 0, 255}, platform::TextRole::content);
    constexpr double scale = 100;
    const Screen screen({scale, scale, 600, -536 * scale, -220 * scale}, page, 1700, 300);
    EXPECT_EQ(screen.at(100, 150), 0x0000FFU);
    EXPECT_EQ(screen.at(1650, 150), white) << "behind its end";
    // The canvas is as it was before.
    EXPECT_EQ(::GetCurrentObject(screen.context(), OBJ_FONT), ::GetStockObject(SYSTEM_FONT));
    RECT clip{};
    ::GetClipBox(screen.context(), &clip);
    EXPECT_EQ(clip.right, 1700);
}

// Bars and gaps of a code are as dark together as on paper, whatever part of a pixel each is wide.
TEST(PreviewRectangles, KeepTheirPlaceAndTheirDarkness) {
    PageRecording page;
    double area = 0;
    for (int x = 3; x < 300; x += 7) {
        const int width = 1 + x % 4;
        page.addRectangle({x, 21, width, 101, {}});
        area += width * 101.0;
    }
    for (const Look& look :
         {onWholeSheet(0.13, 0.13), onWholeSheet(0.37, 0.61), onWholeSheet(1, 1), onWholeSheet(8, 8)}) {
        const Screen screen(look, page);
        const double expected = area * look.scaleX * look.scaleY;
        EXPECT_NEAR(screen.darkness(), expected, expected / 200) << look.scaleX;
        EXPECT_TRUE(isNear(screen.ink(), scaled({3, 21, 298, 121}, look), 1)) << look.scaleX;
    }
    // Rows of modules are one area, without seams.
    PageRecording rows;
    for (int y = 0; y < 200; y += 3) {
        rows.addRectangle({0, y, 300, 3, {}});
    }
    const Screen code(onWholeSheet(0.4, 0.4), rows);
    for (int y = 6; y < 80; ++y) {
        EXPECT_EQ(code.at(50, y), 0U) << y;
    }
    PageRecording colored;
    colored.addRectangle({0, 0, 100, 100, {10, 200, 30}});
    EXPECT_EQ(Screen(onWholeSheet(0.5, 0.5), colored).at(30, 30), 0x0AC81EU);
    Look grey = onWholeSheet(0.5, 0.5);
    grey.color = false;
    EXPECT_EQ(Screen(grey, colored).at(30, 30), 0x7C7C7CU);
}

TEST(PreviewPictures, AreAveragedWhenShrunkAndSharpWhenEnlarged) {
    auto lines = std::make_shared<platform::Picture>(pictures::makePicture(600, 200, 1));
    lines->palette[0] = {255, 255, 255};
    for (std::size_t row = 0; row < 200; ++row) {
        lines->pixels[row * lines->stride() + 30] = 0x10;  // the column 243
    }
    for (const double scale : {0.13, 0.6, 1.0}) {
        PageRecording page;
        page.addPicture({lines, 0, 0, 600, 200});
        Screen screen(onWholeSheet(scale, scale), page);
        EXPECT_NEAR(screen.darkness(), 200 * scale * scale, 3 * scale) << scale;
        const auto column = static_cast<int>((marginX + 243.5) * scale);
        EXPECT_GT(screen.darkness(column, 10) + screen.darkness(column - 1, 10), scale * 0.9) << scale;
        const Screen again(onWholeSheet(scale, scale), page);
        screen.draw(page);
        EXPECT_EQ(screen.darkness(), again.darkness()) << "the second time from what was kept";
    }
    for (const int bits : {1, 2, 4, 8, 24}) {
        for (const bool color : {true, false}) {
            const auto picture = pictureOf(bits);
            PageRecording page;
            page.addPicture({picture, 100 + 13, 50 + 5, -13, -5});
            Look look = onWholeSheet(4, 3);
            look.color = color;
            const Screen screen(look, page);
            for (int y = 0; y < 15; ++y) {
                for (int x = 0; x < 52; ++x) {
                    const platform::Color own = support::colorAt(*picture, 12 - x / 4, 4 - y / 3);
                    ASSERT_EQ(screen.at((marginX + 100) * 4 + x, (marginY + 50) * 3 + y),
                              numberOf(color ? own : platform::drawing::greyOf(own)))
                        << bits << " bits, " << x << ',' << y;
                }
            }
        }
    }
}

// Larger than any sheet, mirrored or not, and where four of its pixels meet.
TEST(PreviewPictures, AreCutAtTheSheetAndTheScreen) {
    const auto picture = pictureOf(8);
    constexpr int size = 15'000'000;
    for (const int sign : {1, -1}) {
        PageRecording page;
        page.addPicture({picture, 300 - sign * 7 * size, 100 - sign * 2 * size, sign * 13 * size, sign * 5 * size});
        const Screen screen({2, 2, 600, 100, 100}, page, 1600, 900);
        EXPECT_EQ(screen.at(700 + 10 * sign, 300 + 10 * sign), numberOf(support::colorAt(*picture, 7, 2)));
        EXPECT_EQ(screen.at(700 - 10 * sign, 300 - 10 * sign), numberOf(support::colorAt(*picture, 6, 1)));
        EXPECT_EQ(screen.ink(), (Box{100 - 2 * marginX, 100 - 2 * marginY, 100 + 2 * (sheetWidth - marginX) - 1,
                                     100 + 2 * (sheetHeight - marginY) - 1}));
    }
}

}  // namespace

}  // namespace platform_windows::print
