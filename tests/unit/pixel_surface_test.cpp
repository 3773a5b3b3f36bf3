// What the surfaces of all systems have in common, on a small sheet that notes what is to be shown on it.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <sstream>

#include "platform/drawing/device_pictures.h"
#include "platform/drawing/likely_resolution.h"
#include "platform/drawing/pixel_surface.h"
#include "platform/drawing/symbol_pixels.h"
#include "runtime/error.h"

namespace {

using namespace platform;
using namespace platform::drawing;

// 400 by 300 pixels, of which 20 on the left and 10 at the top cannot be printed on.
constexpr DeviceCapabilities device{360, 280, 600, 600, 400, 300, 20, 10};
const std::string million(1'000'000, 'x');

class NotingSurface : public PixelSurface {
public:
    NotingSurface() {
        setPage(device, true);
        units_.advance.fill(600);
        units_.advance['.'] = 0;
    }
    using PixelSurface::setPage;

    void select(int emHeight, int rotation = 0) { setFont({"", 0, emHeight, false, false, true, rotation}); }
    // What is shown of a text, and of its underline: start, width and red; edges and red.
    std::string textAt(int x, int y, std::string_view text, Color color = {}) {
        drawText(x, y, text, color, TextRole::content);
        return shown();
    }
    std::string shown() {
        const std::string text = notes_.str();
        notes_.str({});
        return text;
    }

private:
    DeviceFont findFont(const FontRequest&) override { return {{}, &units_}; }
    void showRun(const Run& run) override {
        notes_ << run.text << ' ' << run.start.x << ' ' << run.start.y << ' ' << run.width << " #" << +run.color.red;
    }
    void showRectangle(const Area& area, Color color) override {
        notes_ << " [" << area.across.start << ' ' << area.across.end << ' ' << area.down.start << ' ' << area.down.end
               << " #" << +color.red << ']';
    }
    void showPicture(const std::shared_ptr<const Picture>&, const Frame& frame) override {
        notes_ << " <" << frame.corner.x << ' ' << frame.corner.y << ' ' << frame.width << ' ' << frame.height << '>';
    }

    FontUnits units_{.perEm = 1000, .ascent = 750, .descent = 200, .underlineTop = -100, .underlineThickness = 50};
    std::ostringstream notes_;
};

TEST(PixelSurface, MeasuresWholePixelsAlsoOblongOnes) {
    NotingSurface surface;
    EXPECT_THROW(surface.textWidth("x"), runtime::Error);
    EXPECT_THROW(surface.textAt(0, 0, "x"), runtime::Error);
    surface.select(78);
    EXPECT_EQ(surface.textWidth("0123456789"), 470);
    surface.select(10);
    EXPECT_EQ(surface.textHeight(), 8 + 2);  // half a pixel is a whole one
    surface.select(100'000'000);
    EXPECT_EQ(surface.textWidth(million), INT_MAX);
    surface.select(-5);
    EXPECT_EQ(surface.textAt(0, 0, "xx"), "xx 0 1 2 #0 [0 2 1 2 #0]");

    surface.select(50);
    DeviceCapabilities oblong = device;
    oblong.logPixelsX = 1200;
    surface.setPage(oblong, true);
    EXPECT_EQ(surface.textAt(0, 0, "ab"), "ab 0 38 120 #0 [0 120 43 46 #0]");
    surface.select(50, 90);
    EXPECT_EQ(surface.textAt(100, 200, "ab"), "ab 175 200 60 #0 [185 190 140 200 #0]");
    EXPECT_EQ(surface.textHeight(), 95);
}

TEST(PixelSurface, ClipsAndTurnsTextWithItsUnderline) {
    struct Case {
        int rotation, x, y;
        const char* shown;
    };
    NotingSurface surface;
    for (const auto& [rotation, x, y, shown] : {
             Case{0, 0, 0, "abcdefg 0 75 420 #0 [0 380 85 90 #0]"},
             Case{0, -20 - 60, 0, "bcdefgh -20 75 420 #0 [-20 380 85 90 #0]"},
             Case{0, 380 - 120, -104, "ab 260 -29 120 #0"},
             Case{0, 379, 289, "a 379 364 60 #0"},
             Case{0, 380, 0, ""},
             Case{0, 0, 290, ""},
             Case{0, 0, -105, ""},
             Case{90, 100, 200, "abcd 175 200 240 #0 [185 190 -10 200 #0]"},
             Case{180, 100, 200, "ab 100 125 120 #0 [-20 100 110 115 #0]"},
             Case{270, 100, 200, "ab 25 200 120 #0 [10 15 200 290 #0]"},
         }) {
        surface.select(100, rotation);
        EXPECT_EQ(surface.textAt(x, y, "abcdefgh"), shown);
        for (const int away : {INT_MIN, -1000, 1000, INT_MAX}) {
            EXPECT_EQ(surface.textAt(away, 100, "xxxx") + surface.textAt(100, away, "xxxx"), "");
        }
    }
    surface.select(100);
    EXPECT_EQ(surface.textAt(-500'000 * 60, 0, million), "xxxxxxxx -60 75 480 #0 [-20 380 85 90 #0]");
    EXPECT_LE(surface.textAt(0, 0, std::string(1'000'000, '.')).size(), 500U);  // letters that are no pixel wide
    surface.select(INT_MAX, 90);
    surface.textAt(INT_MIN, INT_MAX, million);
}

TEST(PixelSurface, ClipsRectanglesAndLeavesOutPicturesBeyondTheSheet) {
    NotingSurface surface;
    surface.fillRectangle(10, 20, 30, 40, {255, 0, 0});
    surface.fillRectangle(-1'000'000'000, 5, INT_MAX, INT_MAX, {});
    surface.fillRectangle(INT_MAX, INT_MAX, INT_MAX, INT_MAX, {});
    surface.fillRectangle(0, 0, 0, 5, {});
    surface.fillRectangle(0, 0, 5, -5, {});
    EXPECT_EQ(surface.shown(), " [10 40 20 60 #255] [-20 380 5 290 #0]");
    for (const int x : {INT_MIN, -25, 379, 380, INT_MAX}) {
        surface.drawPicture(nullptr, x, 289, 5, 5);
        surface.drawPicture(nullptr, x, 0, -5, 5);
        surface.drawPicture(nullptr, x, 0, 0, 5);
    }
    EXPECT_EQ(surface.shown(), " <379 289 5 5> <379 0 -5 5> <380 0 -5 5>");
}

TEST(PixelSurface, APageWithoutColourIsGrey) {
    constexpr Color red{255, 0, 0};
    NotingSurface surface;
    surface.setPage(device, false);
    surface.select(100);
    EXPECT_EQ(surface.textAt(0, 0, "a", red), "a 0 75 60 #76 [0 60 85 90 #76]");
    Picture picture;
    picture.bitsPerPixel = 24;
    picture.pixels = {255, 0, 0, 255, 255, 0};
    EXPECT_EQ(greyOf(picture).pixels, (std::vector<std::uint8_t>{76, 226}));
    EXPECT_EQ(greyOf(picture).palette[226], (Color{226, 226, 226}));
    picture.bitsPerPixel = 1;
    picture.palette = {red, {255, 255, 0}};
    EXPECT_EQ(greyOf(picture).pixels, picture.pixels);
    EXPECT_EQ(greyOf(picture).palette, (std::vector<Color>{{76, 76, 76}, {226, 226, 226}}));

    // Made once in colour and once in grey, but only once where it is grey.
    DevicePictures<std::string> made;
    std::string order;
    const auto make = [&](bool grey) { return order += grey ? 'g' : 'c'; };
    const auto colored = std::make_shared<const Picture>(picture);
    const auto grey = std::make_shared<const Picture>(greyOf(picture));
    for (const bool color : {true, false, true, false}) {
        EXPECT_EQ(made.get(colored, color, make), color ? "c" : "ccg");
        EXPECT_EQ(made.get(grey, color, make), "cc");
    }
}

TEST(SymbolPixels, UprightLinesAreSharpAndSlantingOnesSmoothInEverySize) {
    const Symbol cross{1.5, {{8, 2, 8, 14}, {2, 2, 14, 14}}};
    for (int size = 16; size <= 64; ++size) {
        const std::vector<std::uint8_t> pixels = symbolPixels(cross, size);
        ASSERT_EQ(pixels.size(), static_cast<std::size_t>(size * size));
        const auto row = pixels.begin() + size / 4 * size;
        const std::vector<int> upright(row + size * 7 / 16, row + size * 3 / 4);
        EXPECT_TRUE(std::all_of(upright.begin(), upright.end(), [](int o) { return o == 0 || o == 255; })) << size;
        EXPECT_EQ(std::count(upright.begin(), upright.end(), 255), (3 * size + 15) / 32) << size;
        EXPECT_TRUE(std::any_of(pixels.begin(), pixels.end(), [](int o) { return o > 0 && o < 255; })) << size;
    }
    EXPECT_TRUE(symbolPixels(cross, 0).empty());
}

TEST(ScreenResolution, IsBelievedWhereItCanBe) {
    const auto acrossOf = [](double across, double down, double taken) {
        return likelyResolution({across, down}, {taken, taken}).across;
    };
    EXPECT_EQ(acrossOf(92, 93, 96), 92);
    EXPECT_EQ(acrossOf(227, 227, 96), 227);
    EXPECT_EQ(acrossOf(152, 114, 96), 96) << "pixels are about square";
    EXPECT_EQ(acrossOf(290, 290, 96), 96) << "nobody could read it";
    EXPECT_EQ(acrossOf(40, 40, 96), 96) << "a projector";
    EXPECT_EQ(acrossOf(1.0 / 0.0, 0.0 / 0.0, 120), 120) << "no size at all";
}

}  // namespace
