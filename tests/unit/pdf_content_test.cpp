// Content streams: operators by hand from the measures of Liberation Mono (units per em 2048, advance 1229, usWinAscent
// 1705, usWinDescent 615, underline at -393, 84 thick), which stands for Courier New.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "platform/linux/pdf/number_text.h"
#include "platform/linux/pdf/page_surface.h"
#include "platform/linux/pdf/text_string.h"
#include "unit/pdf_support.h"

namespace {

using platform::Color;
using platform::TextRole;
using platform_linux::pdf::FontCollection;
using platform_linux::pdf::PageSurface;

constexpr Color black{};
const std::string pageStart = ".12 0 0 .12 0 841.89 cm\n";

class PdfContent : public testing::Test {
protected:
    void SetUp() override { begin(pdf_support::a4Page()); }

    void begin(const platform_linux::pdf::PdfPage& page) {
        surface_.setPage(page);
        surface_.setFont(font_);
        surface_.begin();
    }
    void setFont(int em, bool underline = false) {
        font_.emHeight = em;
        font_.underline = underline;
        surface_.setFont(font_);
    }
    void draw(int x, int y, std::string_view text, Color color = black, TextRole role = TextRole::content) {
        surface_.drawText(x, y, text, color, role);
    }
    std::string finish() { return std::string(surface_.finish()); }

    platform::FontRequest font_{"Courier New", platform::charsetOem, 78, false, false, false};
    FontCollection fonts_{platform_linux::dosCodePage(850)};
    platform_linux::pdf::PictureCollection pictures_;
    PageSurface surface_{fonts_, pictures_};
};

TEST_F(PdfContent, WritesOperatorsOnlyWhereSomethingChanges) {
    draw(0, 0, "Hallo");      // baseline round(64.94) = 65 below the margin of 100
    draw(5 * 47, 0, "Welt");  // goes on where the run before ended
    draw(0, 83, "rot", {255, 0, 0});
    setFont(156);  // advance round(93.61) = 94, baseline round(129.87) = 130
    draw(10, 83, "gro\xE1", {255, 0, 0});
    EXPECT_EQ(finish(), pageStart +
                            "BT\n/F0 78 Tf\n.2 Tc\n100 -165 Td\n(Hallo)Tj\n(Welt)Tj\n"
                            "1 0 0 rg\n0 -83 Td\n(rot)Tj\n"
                            "/F0 156 Tf\n.4 Tc\n10 -65 Td\n(gro\xE1)Tj\nET\n");
    EXPECT_EQ(surface_.textWidth("abc"), 3 * 94);

    surface_.begin();  // nothing is left over from the page before
    draw(0, 0, "x");
    EXPECT_EQ(finish(), pageStart + "BT\n/F0 156 Tf\n.4 Tc\n100 -230 Td\n(x)Tj\nET\n");
}

TEST_F(PdfContent, ClipsRunsToTheSheet) {
    const std::string million(1'000'000, 'x');
    draw(0, 0, million);
    EXPECT_EQ(finish(), pageStart + "BT\n/F0 78 Tf\n.2 Tc\n100 -165 Td\n(" + std::string(104, 'x') + ")Tj\nET\n");

    surface_.begin();
    draw(-100 - 47 * 1000 - 5, 0, std::string(1000, 'a') + "bcd");  // b's cell ends within the sheet
    EXPECT_NE(finish().find("-5 -165 Td\n(bcd)Tj"), std::string::npos);

    surface_.begin();
    for (const int x : {INT_MIN, -100 - 47, 4861, INT_MAX}) {
        draw(x, 0, "x");
    }
    for (const int y : {INT_MIN, -100 - 65 - 23, 6916, INT_MAX}) {
        draw(0, y, million);
        surface_.fillRectangle(0, y, 10, 50, black);
    }
    surface_.fillRectangle(INT_MAX, 0, INT_MAX, INT_MAX, black);
    surface_.fillRectangle(0, 0, 0, 5, black);
    surface_.fillRectangle(0, 0, 5, -5, black);
    draw(0, 0, "");
    EXPECT_EQ(finish(), pageStart);

    surface_.begin();
    setFont(INT_MAX, true);
    draw(INT_MAX, INT_MAX, million);
    draw(INT_MIN, 0, million);
    surface_.fillRectangle(INT_MIN, INT_MIN, INT_MAX, INT_MAX, black);
    surface_.fillRectangle(-200, 50, INT_MAX, 10, black);
    EXPECT_NE(finish().find("0 -160 4961 10 re f\n"), std::string::npos);
    EXPECT_EQ(surface_.textWidth(million), INT_MAX);
}

TEST_F(PdfContent, KeepsTheShapeOfCharactersOnOblongPixels) {
    auto page = pdf_support::a4Page();
    page.device.logPixelsY = 1200;
    begin(page);
    setFont(156);  // 156 pixels down are as long as 78 across
    draw(0, 0, "ab");
    EXPECT_EQ(surface_.textWidth("ab"), 94);
    EXPECT_EQ(finish(), ".12 0 0 .06 0 841.89 cm\nBT\n/F0 156 Tf\n50 Tz\n.4 Tc\n100 -230 Td\n(ab)Tj\nET\n");
}

// The cell of one "x" at 78 pixels is 47 wide, 88 high, its baseline 65 below the top, its underline 15 below that.
TEST_F(PdfContent, TurnsTextAboutThePointItIsDrawnAt) {
    const auto turned = [&](int rotation, std::string_view text) {
        font_.rotation = rotation;
        setFont(78, true);
        surface_.begin();
        draw(1000, 2000, text);
        return finish();
    };
    const std::string start = pageStart + "BT\n/F0 78 Tf\n.2 Tc\n";
    EXPECT_EQ(turned(90, "xx"), start + "0 1 -1 0 1165 -2100 Tm\n(xx)Tj\nET\n1180 -2100 3 94 re f\n");
    EXPECT_EQ(turned(180, "xx"), start + "-1 0 0 -1 1100 -2035 Tm\n(xx)Tj\nET\n1006 -2020 94 3 re f\n");
    EXPECT_EQ(turned(270, "xx"), start + "0 -1 1 0 1035 -2100 Tm\n(xx)Tj\nET\n1017 -2194 3 94 re f\n");
    EXPECT_EQ(surface_.textWidth("xx"), 94);
    EXPECT_EQ(surface_.textHeight(), 88);

    // 2100 pixels up to the edge of the sheet, and what lies beyond it on all sides.
    const std::string million(1'000'000, 'x');
    EXPECT_NE(turned(90, million).find('(' + std::string(45, 'x') + ")Tj"), std::string::npos);
    EXPECT_NE(turned(180, million).find('(' + std::string(24, 'x') + ")Tj"), std::string::npos);
    surface_.begin();
    for (const int rotation : {90, 180, 270}) {
        font_.rotation = rotation;
        setFont(78);
        for (const int far : {INT_MIN, -100'000, 100'000, INT_MAX}) {
            draw(far, 500, "xxxx");
            draw(500, far, "xxxx");
        }
    }
    EXPECT_EQ(finish(), pageStart);

    // Going on where a run ended, and back to text that is not turned.
    turned(90, "");
    setFont(78);
    draw(1000, 2000, "a");
    draw(1000, 2000 - 47, "b");
    font_.rotation = 0;
    setFont(78);
    draw(1000, 2000, "c");
    EXPECT_EQ(finish(), start + "0 1 -1 0 1165 -2100 Tm\n(a)Tj\n(b)Tj\nET\nBT\n1100 -2165 Td\n(c)Tj\nET\n");
}

TEST_F(PdfContent, TurnedTextKeepsItsSizeOnOblongPixels) {
    auto page = pdf_support::a4Page();
    page.device.logPixelsY = 1200;
    font_.rotation = 90;
    begin(page);
    setFont(156);
    draw(0, 1000, "ab");
    EXPECT_EQ(surface_.textWidth("ab"), 188);
    EXPECT_EQ(surface_.textHeight(), 88);
    EXPECT_EQ(finish(), ".12 0 0 .06 0 841.89 cm\nBT\n/F0 156 Tf\n.4 Tc\n0 1 -.5 0 165 -1100 Tm\n(ab)Tj\nET\n");
}

TEST(PdfText, WritesNumbersInTheirShortestForm) {
    const auto real = [](double value, int decimals) {
        std::string text;
        platform_linux::pdf::appendReal(text, value, decimals);
        return text;
    };
    EXPECT_EQ(real(0, 3) + ' ' + real(-0.0001, 3) + ' ' + real(-0.5, 3) + ' ' + real(100, 3) + ' ' + real(10, 0),
              "0 0 -.5 100 10");
    EXPECT_EQ(real(0.9996, 3) + ' ' + real(72.0 / 203, 7) + ' ' + real(-12.340, 4), "1 .3546798 -12.34");
}

TEST(PdfText, WritesTextStringsAndDates) {
    using platform_linux::pdf::textString;
    EXPECT_EQ(textString("a(b)\\"), "(a\\(b\\)\\\\)");
    EXPECT_EQ(textString("\u00E4\u20AC\U0001F600"), "<FEFF00E420ACD83DDE00>");
    // A lone lead byte, an overlong form, a surrogate, a text cut off.
    EXPECT_EQ(textString("\xC3x\xC0\x80"), "<FEFFFFFD0078FFFDFFFD>");
    EXPECT_EQ(textString("\xED\xA0\x80\xE2\x82"), "<FEFFFFFDFFFDFFFDFFFDFFFD>");
    EXPECT_EQ(platform_linux::pdf::dateString(0), "(D:19700101000000Z)");
    EXPECT_EQ(platform_linux::pdf::dateString(1795268707), "(D:20261121134507Z)");
}

}  // namespace
