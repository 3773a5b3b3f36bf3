#include "barcode/clsLinearBarCodes.h"

#include <limits>

#include "unit/support/core_test.h"

namespace {

using barcode::clsLinearBarCodes;
using enum barcode::TextPlacement;
using enum barcode::TextAlignment;
using testing_support::DrawnRectangle;
using testing_support::failureOf;

constexpr int least = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

// Draws on a sheet of 11904 x 16838 pixels at 1440 pixels per inch, its printable area 240 pixels inside.
class BarcodeTest : public ::testing::Test {
protected:
    BarcodeTest() {
        bars.Symbology(barcode::code39);
        bars.BarcodeOutput(&surface);
        bars.BarCodeX(1000);
        bars.BarCodeY(2000);
        bars.BarcodeHeight(300);
        bars.BarCodeData("A");
    }
    std::vector<DrawnRectangle> draw() {
        surface.clear();
        bars.DrawBarCode();
        return surface.page().rectangles;
    }

    testing_support::RecordingDevice device;
    testing_support::RecordingSurface surface{device};
    clsLinearBarCodes bars;
};

TEST_F(BarcodeTest, ANewObjectHasTheDefaults) {
    const clsLinearBarCodes fresh;
    EXPECT_EQ(std::tuple(fresh.BarcodeHeight(), fresh.BarXFactor(), fresh.BarMultiplier(), fresh.BarRatio()),
              std::tuple(150, 3, 2, 1));
    EXPECT_EQ(std::tuple(fresh.BarCodeX(), fresh.BarCodeY(), fresh.BarTextGap()), std::tuple(0, 0, 0));
    EXPECT_EQ(std::tuple(fresh.HRTextPlacement(), fresh.HRTextAlignment()), std::tuple(none, centre));
    EXPECT_EQ(std::tuple(fresh.BarTextFont().name, fresh.BarTextFont().size), std::tuple("Tahoma", 10));
}

TEST_F(BarcodeTest, TheRatioIsCheckedAgainstTheSymbologyInForce) {
    constexpr double refused = 0;
    using Row = std::tuple<int, double, double>;
    for (const auto& [symbology, given, stored] :
         {Row{0, 7, 1}, Row{1, 2, 1}, Row{1, 3, 1.5}, Row{2, 2.5, 1.25}, Row{8, 3, 1.5}, Row{3, 3, 1}, Row{7, 3, 1},
          Row{1, 1.99, refused}, Row{2, 3.01, refused}, Row{8, std::numeric_limits<double>::quiet_NaN(), refused}}) {
        bars.Symbology(barcode::code39);
        bars.BarRatio(2.2);
        bars.Symbology(symbology);
        const double ratio = given;
        EXPECT_EQ(failureOf([&] { bars.BarRatio(ratio); }).number(), stored == refused ? 5980 : 0) << symbology;
        EXPECT_EQ(bars.BarRatio(), stored == refused ? 1.1 : stored) << symbology;
    }
}

TEST_F(BarcodeTest, EveryRefusalHasItsNumberTextAndSource) {
    const auto refusal = [this](const std::function<void(clsLinearBarCodes&)>& prepare) {
        return testing_support::failureText([&] {
            prepare(bars);
            bars.DrawBarCode();
        });
    };
    const std::string character = "5970 clsBarCode.BarCodeData: Invalid character in the Barcode.";
    EXPECT_EQ(refusal([](auto& object) { object.BarCodeData("b"); }), character);
    EXPECT_EQ(bars.BarCodeData() + bars.ErrorText(), "AInvalid character in the Barcode.");
    EXPECT_EQ(refusal([](auto& object) { object.BarRatio(4); }), "5980 clsBarCode.BarRatio: Invalid barcode ratio.");
    EXPECT_EQ(refusal([](auto& object) { object.Symbology(barcode::msi); }), character);
    EXPECT_EQ(refusal([](auto& object) { object.BarCodeData(""); }),
              "5 clsBarCode.BarWidth: No barcode data specified.");
    EXPECT_EQ(refusal([](auto& object) { object.Symbology(13); }),
              "5 clsBarCode.Draw_BarCode: Invalid or no symbology selected.");
    // Without a surface nothing else counts.
    EXPECT_EQ(refusal([](auto& object) { object.BarcodeOutput(nullptr); }),
              "5 clsBarCode.BarcodeOutput: Invalid control to output the barcode.");
}

TEST_F(BarcodeTest, ARefusalSaysWhichCharacterStandsWhere) {
    const auto detail = [this](const std::string& data) { return failureOf([&] { bars.BarCodeData(data); }).detail(); };
    const std::string zeros(40, '0');
    EXPECT_TRUE(detail(zeros + "b").starts_with("Zeichen 'b' an Stelle 41 von '" + zeros + "...'; "));
    EXPECT_EQ(detail("AB\x84"),
              "Zeichen mit dem Code 132 an Stelle 3 von 'AB?'; möglich sind hier nur Ziffern, Großbuchstaben, "
              "Leerzeichen und - . $ / + %");
    bars.Symbology(0);
    bars.BarCodeData("b");
    EXPECT_EQ(bars.HRText(), "");
}

TEST_F(BarcodeTest, NarrowElementsAreSixHundredthsOfAnInchOfTheirAxis) {
    using Row = std::tuple<int, double, int, double, int, int>;
    for (const auto& [dpi, factor, multiplier, ratio, narrow, wide] :
         {Row{600, 3, 2, 3, 6, 18}, Row{150, 3, 2, 2.5, 2, 5}, Row{300, 3, 1, 2.5, 2, 5}, Row{300, 3, 2, 2.2, 3, 7},
          Row{72, 1, 1, 2.5, 1, 3}, Row{600, 0, 2, 3, 1, 3}, Row{600, -3, 2, 2, 1, 2}}) {
        bars.BarXFactor(factor);
        bars.BarMultiplier(multiplier);
        bars.BarRatio(ratio);
        device.capabilities.logPixelsX = dpi;
        device.capabilities.logPixelsY = 2 * dpi;
        bars.BarRotation(0);
        const auto across = draw();
        std::swap(device.capabilities.logPixelsX, device.capabilities.logPixelsY);
        bars.BarRotation(270);
        const auto down = draw();
        EXPECT_EQ(std::tuple(across[0].width, across[2].width), std::tuple(narrow, wide)) << dpi;
        EXPECT_EQ(std::tuple(down[0].height, down[2].height), std::tuple(narrow, wide)) << dpi;
    }
}

TEST_F(BarcodeTest, EachRotationIsTheSameSymbolTurned) {
    bars.BarCodeData("A1");
    bars.BarColor({1, 2, 3});
    bars.HRTextPlacement(below);
    // The bars, and the point that the text begins at.
    const auto pieces = [this] {
        auto drawn = draw();
        const auto text = surface.page().texts.at(0);
        drawn.push_back({text.x, text.y, 0, 0, text.color});
        return drawn;
    };
    const auto upright = pieces();
    EXPECT_EQ(upright[0], (DrawnRectangle{1000, 2000, 14, 300, {1, 2, 3}}));
    const int length = static_cast<int>(bars.TotalBarWidth());
    const int depth = static_cast<int>(bars.TotalBarHeight());
    for (const int degrees : {90, 180, 270, 45, -90, 360}) {
        bars.BarRotation(degrees);
        const auto turned = pieces();
        EXPECT_EQ(surface.page().texts[0].font.rotation, degrees == 45 || degrees % 360 <= 0 ? 0 : degrees);
        ASSERT_EQ(turned.size(), upright.size());
        for (std::size_t i = 0; i < turned.size(); ++i) {
            const auto& [x, y, width, height, color] = upright[i];
            const int rest = 1000 + length - x - width;
            const int below = 2000 + depth - y - height;
            EXPECT_EQ(turned[i], (degrees == 90    ? DrawnRectangle{y - 1000, 2000 + rest, height, width, color}
                                  : degrees == 180 ? DrawnRectangle{1000 + rest, 2000 + below, width, height, color}
                                  : degrees == 270 ? DrawnRectangle{1000 + below, x + 1000, height, width, color}
                                                   : upright[i]))
                << degrees << ", piece " << i;
        }
        EXPECT_EQ(std::tuple(bars.TotalBarWidth(), bars.TotalBarHeight()), std::tuple(length, depth)) << degrees;
    }
}

// At 1440 pixels per inch down 10 points are 200 pixels: characters 120 wide and 227 high.
TEST_F(BarcodeTest, TextStandsWhereItIsPlaced) {
    device.capabilities.logPixelsX = 720;
    const int length = static_cast<int>(bars.TotalBarWidth());
    bars.BarTextGap(20);
    EXPECT_EQ(draw().at(0).y, 2000);
    EXPECT_TRUE(surface.page().texts.empty());
    EXPECT_EQ(bars.TotalBarHeight(), 300);
    const int free = length - 120;   // beside small text
    const int wide = 1200 - length;  // beside the bars, of text of 100 points
    using Row = std::tuple<barcode::TextPlacement, barcode::TextAlignment, int, int, int, int, int>;
    for (const auto& [placement, alignment, size, barsX, barsY, textX, textY] :
         {Row{below, left, 10, 0, 0, 0, 320}, Row{below, centre, 10, 0, 0, free / 2, 320},
          Row{above, right, 10, 0, 247, free, 0}, Row{above, centre, 100, wide / 2, 2286, 0, 0},
          Row{below, right, 100, wide, 0, 0, 320}}) {
        bars.HRTextPlacement(placement);
        bars.HRTextAlignment(alignment);
        bars.BarTextFont({"Arial", static_cast<double>(size), true, false});
        const auto drawn = draw();
        const auto text = surface.page().texts.at(0);
        EXPECT_EQ(text.text, "A");
        EXPECT_EQ(text.font, (platform::FontRequest{"Arial", platform::charsetOem, 20 * size, true}));
        EXPECT_EQ(std::tuple(drawn[0].x - 1000, drawn[0].y - 2000), std::tuple(barsX, barsY));
        EXPECT_EQ(std::tuple(text.x - 1000, text.y - 2000), std::tuple(textX, textY));
        EXPECT_EQ(bars.TotalBarWidth(), size > 10 ? 1200 : length);
        EXPECT_EQ(bars.TotalBarHeight(), 320 + (size > 10 ? 2266 : 227));
    }
    bars.BarTextGap(-1);
    bars.BarcodeHeight(-1);
    EXPECT_EQ(bars.TotalBarHeight(), 2266);
}

TEST_F(BarcodeTest, CheckAndStopCharactersAreShownWhereAskedFor) {
    bars.UseCheckDigit(true);
    EXPECT_EQ(bars.HRText(), "A");
    bars.DisplayCheckDigit(true);
    EXPECT_EQ(bars.HRText(), "AA");
    bars.DisplayStopStart(true);
    EXPECT_EQ(bars.HRText(), "*AA*");
}

TEST_F(BarcodeTest, OnlyWhatLiesOnTheSheetIsDrawn) {
    bars.BarCodeData(std::string(20000, 'X'));
    for (const int rotation : {0, 90, 180, 270}) {
        bars.BarRotation(rotation);
        for (const int corner : {0, -1000000, least, greatest}) {
            bars.BarCodeX(rotation % 180 == 0 ? corner : 0);
            bars.BarCodeY(rotation % 180 == 0 ? 0 : corner);
            const auto drawn = draw();
            const bool seen = corner == 0 || corner == -1000000;
            EXPECT_TRUE(seen ? drawn.size() > 100 && drawn.size() < 1000 : drawn.empty()) << drawn.size();
            for (const DrawnRectangle& bar : drawn) {
                EXPECT_GE(std::min(bar.x, bar.y), -240);
                EXPECT_LE(bar.x + bar.width, 11904 - 240);
                EXPECT_LE(bar.y + bar.height, 16838 - 240);
            }
        }
    }
    // Nor does text that is elsewhere, or absurd measures.
    bars.HRTextPlacement(below);
    bars.BarXFactor(1e300);
    bars.BarTextFont({"Tahoma", 1000, false, false});
    bars.BarcodeHeight(greatest);
    bars.BarTextGap(greatest);
    EXPECT_TRUE(draw().empty() && surface.page().texts.empty());
    EXPECT_GT(bars.TotalBarHeight(), std::int64_t{2} * greatest);
}

}  // namespace
