#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "barcode/clsLinearBarCodes.h"
#include "runtime/error.h"
#include "unit/support/recording_printer.h"

namespace {

using barcode::TextAlignment;
using barcode::TextPlacement;
using testing_support::DrawnRectangle;

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
    barcode::clsLinearBarCodes bars;
};

DrawnRectangle boxOf(const std::vector<DrawnRectangle>& rectangles) {
    int left = std::numeric_limits<int>::max();
    int top = left;
    int right = std::numeric_limits<int>::min();
    int bottom = right;
    for (const DrawnRectangle& bar : rectangles) {
        left = std::min(left, bar.x);
        top = std::min(top, bar.y);
        right = std::max(right, bar.x + bar.width);
        bottom = std::max(bottom, bar.y + bar.height);
    }
    return {left, top, right - left, bottom - top, {}};
}

TEST_F(BarcodeTest, TheRatioIsCheckedAgainstTheSymbologyInForce) {
    struct Row {
        int symbology;
        double given;
        double stored;  // 0 where it is refused
    };
    for (const Row& row : {Row{0, 7, 1}, Row{1, 2, 1}, Row{1, 3, 1.5}, Row{2, 2.5, 1.25}, Row{8, 3, 1.5}, Row{3, 3, 1},
                           Row{7, 3, 1}, Row{10, -1, 1}, Row{12, 2, 1}, Row{1, 1.99, 0}, Row{2, 3.01, 0},
                           Row{8, std::numeric_limits<double>::quiet_NaN(), 0}}) {
        barcode::clsLinearBarCodes fresh;
        EXPECT_EQ(fresh.BarRatio(), 1);
        fresh.Symbology(row.symbology);
        if (row.stored > 0) {
            fresh.BarRatio(row.given);
            EXPECT_EQ(fresh.BarRatio(), row.stored) << row.symbology;
        } else {
            fresh.BarRatio(2.5);
            EXPECT_THROW(fresh.BarRatio(row.given), runtime::Error) << row.symbology;
            EXPECT_EQ(fresh.BarRatio(), 1.25);
        }
    }
    bars.BarRatio(3);
    bars.Symbology(barcode::codabar);
    EXPECT_EQ(bars.BarRatio(), 1.5);
}

TEST_F(BarcodeTest, EveryRefusalHasItsNumberTextAndSource) {
    struct Row {
        std::function<void(barcode::clsLinearBarCodes&)> step;
        int number;
        const char* text;
        const char* source;
    };
    const auto drawing = [](auto prepare) {
        return [prepare](barcode::clsLinearBarCodes& object) {
            prepare(object);
            object.DrawBarCode();
        };
    };
    constexpr const char* character = "Invalid character in the Barcode.";
    constexpr const char* symbology = "Invalid or no symbology selected.";
    constexpr const char* noData = "No barcode data specified.";
    constexpr const char* noOutput = "Invalid control to output the barcode.";
    constexpr const char* dataSource = "clsBarCode.BarCodeData";
    constexpr const char* drawSource = "clsBarCode.Draw_BarCode";
    const std::vector<Row> rows = {
        {[](auto& object) { object.BarCodeData("ABc"); }, 5970, character, dataSource},
        {drawing([](auto& object) { object.Symbology(barcode::msi); }), 5970, character, dataSource},
        {[](auto& object) { object.BarRatio(4); }, 5980, "Invalid barcode ratio.", "clsBarCode.BarRatio"},
        {drawing([](auto& object) { object.Symbology(0); }), 5, symbology, drawSource},
        {drawing([](auto& object) { object.Symbology(13); }), 5, symbology, drawSource},
        {drawing([](auto& object) { object.BarCodeData(""); }), 5, noData, "clsBarCode.BarWidth"},
        {[](auto&) { barcode::clsLinearBarCodes().TotalBarWidth(); }, 5, noOutput, "clsBarCode.BarcodeOutput"},
        // Without a surface nothing else counts, without a symbology the data does not.
        {drawing([](auto& object) { object = barcode::clsLinearBarCodes(); }), 5, noOutput, "clsBarCode.BarcodeOutput"},
        {drawing([](auto& object) {
             object.BarCodeData("");
             object.Symbology(-1);
         }),
         5, symbology, drawSource}};
    for (const Row& row : rows) {
        barcode::clsLinearBarCodes object = bars;
        try {
            row.step(object);
            ADD_FAILURE() << row.text;
        } catch (const runtime::Error& error) {
            EXPECT_EQ(error.number(), row.number) << row.text;
            EXPECT_EQ(error.description(), row.text);
            EXPECT_EQ(error.source(), row.source);
        }
    }
    EXPECT_TRUE(surface.page().rectangles.empty());
    EXPECT_THROW(bars.BarCodeData("b"), runtime::Error);
    EXPECT_EQ(bars.ErrorText(), character);
    EXPECT_EQ(bars.BarCodeData(), "A");
}

TEST_F(BarcodeTest, ARefusalSaysWhichCharacterStandsWhere) {
    const std::string possible = "; möglich sind hier nur Ziffern, Großbuchstaben, Leerzeichen und - . $ / + %";
    for (const auto& [data, character] :
         {std::pair{"AB\x84", "mit dem Code 132 an Stelle 3 von 'AB?'"}, {"Abc", "'b' an Stelle 2 von 'Abc'"}}) {
        try {
            bars.BarCodeData(data);
            ADD_FAILURE() << data;
        } catch (const runtime::Error& error) {
            EXPECT_EQ(error.detail(), "Zeichen " + std::string(character) + possible);
        }
        barcode::clsLinearBarCodes unchosen;
        EXPECT_NO_THROW(unchosen.BarCodeData(data));
        EXPECT_EQ(unchosen.HRText(), "");
    }
}

// Code 39 "*A*" at 1440 pixels per inch: narrow elements of 14.4 and wide ones of 43.2 pixels, drawn with whole ones.
TEST_F(BarcodeTest, BarsAreWholePixelsFromTheCornerOn) {
    bars.BarRatio(3);
    bars.BarColor({1, 2, 3});
    const auto drawn = draw();
    ASSERT_EQ(drawn.size(), 15U);
    EXPECT_EQ(drawn[0], (DrawnRectangle{1000, 2000, 14, 300, {1, 2, 3}}));
    EXPECT_EQ(drawn[1], (DrawnRectangle{1000 + 14 + 42, 2000, 14, 300, {1, 2, 3}}));
    EXPECT_EQ(drawn[2], (DrawnRectangle{1000 + 14 + 42 + 14 + 14, 2000, 42, 300, {1, 2, 3}}));
    EXPECT_EQ(bars.TotalBarWidth(), 3 * (6 * 14 + 3 * 42) + 2 * 14);
    EXPECT_EQ(boxOf(drawn), (DrawnRectangle{1000, 2000, static_cast<int>(bars.TotalBarWidth()), 300, {}}));
}

TEST_F(BarcodeTest, NarrowElementsAreSixHundredthsOfAnInchOfTheirAxis) {
    struct Row {
        int dpi;
        double factor;
        int multiplier;
        double ratio;
        int narrow;
        int wide;
    };
    for (const Row& row :
         {Row{600, 3, 2, 3, 6, 18}, Row{203, 3, 2, 3, 2, 6}, Row{150, 3, 2, 2.5, 2, 5}, Row{300, 3, 1, 2.5, 2, 5},
          Row{300, 3, 2, 2.2, 3, 7}, Row{72, 1, 1, 2.5, 1, 3}, Row{600, 0, 2, 3, 1, 3}, Row{600, -3, 2, 2, 1, 2}}) {
        device.capabilities.logPixelsX = row.dpi;
        device.capabilities.logPixelsY = 2 * row.dpi;
        bars.BarXFactor(row.factor);
        bars.BarMultiplier(row.multiplier);
        bars.BarRatio(row.ratio);
        const auto across = draw();
        EXPECT_EQ(across[0].width, row.narrow) << row.dpi;
        EXPECT_EQ(across[2].width, row.wide) << row.dpi;
    }
    bars.BarXFactor(3);
    bars.BarRotation(90);
    device.capabilities.logPixelsX = 300;
    device.capabilities.logPixelsY = 600;
    EXPECT_EQ(draw()[0].height, 6);
}

TEST_F(BarcodeTest, EachRotationIsTheSameSymbolTurned) {
    bars.BarCodeData("A1");
    bars.HRTextPlacement(TextPlacement::below);
    const auto upright = draw();
    const auto text = surface.page().texts.at(0);
    const int length = static_cast<int>(bars.TotalBarWidth());
    const int depth = static_cast<int>(bars.TotalBarHeight());
    for (const int degrees : {90, 180, 270, 45, -90, 360}) {
        bars.BarRotation(degrees);
        const auto turned = draw();
        ASSERT_EQ(turned.size(), upright.size());
        for (std::size_t i = 0; i < turned.size(); ++i) {
            const DrawnRectangle& bar = upright[i];
            const int along = bar.x - 1000;
            const int across = bar.y - 2000;
            const int rest = length - along - bar.width;
            const int below = depth - across - bar.height;
            const DrawnRectangle expected =
                degrees == 90    ? DrawnRectangle{1000 + across, 2000 + rest, bar.height, bar.width, {}}
                : degrees == 180 ? DrawnRectangle{1000 + rest, 2000 + below, bar.width, bar.height, {}}
                : degrees == 270 ? DrawnRectangle{1000 + below, 2000 + along, bar.height, bar.width, {}}
                                 : bar;
            EXPECT_EQ(turned[i], expected) << degrees << ", bar " << i;
        }
        const auto turnedText = surface.page().texts.at(0);
        const int start = text.x - 1000;
        const auto [x, y, rotation] = degrees == 90    ? std::tuple{300, length - start, 90}
                                      : degrees == 180 ? std::tuple{length - start, depth - 300, 180}
                                      : degrees == 270 ? std::tuple{depth - 300, start, 270}
                                                       : std::tuple{start, 300, 0};
        EXPECT_EQ(std::tuple(turnedText.x, turnedText.y, turnedText.font.rotation),
                  std::tuple(1000 + x, 2000 + y, rotation));
        EXPECT_EQ(bars.TotalBarWidth(), length) << degrees;
        EXPECT_EQ(bars.TotalBarHeight(), depth) << degrees;
    }
}

// At 1440 pixels per inch 10 points are 200 pixels: characters 120 wide and 227 high.
TEST_F(BarcodeTest, TextStandsWhereItIsPlaced) {
    const int length = static_cast<int>(bars.TotalBarWidth());
    bars.BarTextGap(20);
    EXPECT_EQ(draw().at(0).y, 2000);
    EXPECT_TRUE(surface.page().texts.empty());
    EXPECT_EQ(bars.TotalBarHeight(), 300);

    struct Row {
        TextPlacement placement;
        TextAlignment alignment;
        double size;
        int barsX, barsY, textX, textY;
    };
    const int free = length - 120;   // beside small text
    const int wide = 1200 - length;  // beside the bars, of text of 100 points
    for (const Row& row : {Row{TextPlacement::below, TextAlignment::left, 10, 0, 0, 0, 320},
                           Row{TextPlacement::below, TextAlignment::centre, 10, 0, 0, free / 2, 320},
                           Row{TextPlacement::above, TextAlignment::right, 10, 0, 247, free, 0},
                           Row{TextPlacement::above, TextAlignment::left, 100, 0, 2286, 0, 0},
                           Row{TextPlacement::above, TextAlignment::centre, 100, wide / 2, 2286, 0, 0},
                           Row{TextPlacement::below, TextAlignment::right, 100, wide, 0, 0, 320}}) {
        bars.HRTextPlacement(row.placement);
        bars.HRTextAlignment(row.alignment);
        bars.BarTextFont({"Tahoma", row.size, true, false});
        const auto drawn = draw();
        const auto text = surface.page().texts.at(0);
        EXPECT_EQ(text.text, "A");
        EXPECT_EQ(text.font.name, "Tahoma");
        EXPECT_TRUE(text.font.bold && !text.font.italic);
        EXPECT_EQ(drawn[0].x - 1000, row.barsX);
        EXPECT_EQ(drawn[0].y - 2000, row.barsY);
        EXPECT_EQ(text.x - 1000, row.textX);
        EXPECT_EQ(text.y - 2000, row.textY);
        EXPECT_EQ(bars.TotalBarWidth(), row.size > 10 ? 1200 : length);
        EXPECT_EQ(bars.TotalBarHeight(), 320 + (row.size > 10 ? 2266 : 227));
    }
}

TEST_F(BarcodeTest, CheckAndStopCharactersAreShownWhereAskedFor) {
    bars.BarCodeData("CODE 39");
    bars.UseCheckDigit(true);
    EXPECT_EQ(bars.HRText(), "CODE 39");
    bars.DisplayCheckDigit(true);
    bars.DisplayStopStart(true);
    EXPECT_EQ(bars.HRText(), "*CODE 39R*");
}

TEST_F(BarcodeTest, OnlyWhatLiesOnTheSheetIsDrawn) {
    const std::string endless(20000, 'X');
    bars.BarCodeData(endless);
    for (const int rotation : {0, 90, 180, 270}) {
        bars.BarRotation(rotation);
        for (const int corner : {0, -1000000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
            bars.BarCodeX(rotation % 180 == 0 ? corner : 0);
            bars.BarCodeY(rotation % 180 == 0 ? 0 : corner);
            const auto drawn = draw();
            if (corner != 0 && corner != -1000000) {
                EXPECT_TRUE(drawn.empty());
                continue;
            }
            ASSERT_GT(drawn.size(), 100U);
            EXPECT_LT(drawn.size(), 1000U);
            const DrawnRectangle box = boxOf(drawn);
            EXPECT_GE(box.x, -240);
            EXPECT_GE(box.y, -240);
            EXPECT_LE(box.x + box.width, 11904 - 240);
            EXPECT_LE(box.y + box.height, 16838 - 240);
        }
    }
    // Nor does text that is elsewhere, or absurd measures.
    bars.HRTextPlacement(TextPlacement::below);
    bars.BarXFactor(1e300);
    bars.BarTextFont({"Tahoma", 1000, false, false});
    bars.BarcodeHeight(std::numeric_limits<int>::max());
    bars.BarTextGap(std::numeric_limits<int>::max());
    EXPECT_TRUE(draw().empty());
    EXPECT_TRUE(surface.page().texts.empty());
    EXPECT_GT(bars.TotalBarHeight(), std::int64_t{2} * std::numeric_limits<int>::max());
}

}  // namespace
