// Content streams: operators by hand from the measures of Liberation Mono (units per em 2048, advance 1229, usWinAscent
// 1705, usWinDescent 615, underline at -393, 84 thick), which stands for Courier New.
#include <gtest/gtest.h>

#include <string>

#include "pictures/picture_size.h"
#include "platform/linux/pdf/number_text.h"
#include "platform/linux/pdf/page_surface.h"
#include "platform/linux/pdf/text_string.h"
#include "unit/pdf_support.h"

namespace {

using platform_linux::pdf::FontCollection;
using platform_linux::pdf::PageSurface;

const std::string pageStart = ".12 0 0 .12 0 841.89 cm\n";

class PdfContent : public testing::Test {
protected:
    void SetUp() override { begin(600); }

    void begin(int dpiY) {
        auto page = pdf_support::a4Page();
        page.device.logPixelsY = dpiY;
        surface_.setPage(page);
        surface_.begin();
    }
    void setFont(int em, int rotation = 0, bool underline = false) {
        surface_.setFont({"Courier New", platform::charsetOem, em, false, false, underline, rotation});
    }
    void draw(int x, int y, std::string_view text, platform::Color color = {}) {
        surface_.drawText(x, y, text, color, platform::TextRole::content);
    }
    std::string finish() { return std::string(surface_.finish()); }

    FontCollection fonts_{platform_linux::dosCodePage(850)};
    platform_linux::pdf::PictureCollection pictures_;
    PageSurface surface_{fonts_, pictures_};
};

TEST_F(PdfContent, WritesOperatorsOnlyWhereSomethingChanges) {
    setFont(78);
    draw(0, 0, "Hallo");      // baseline round(64.94) = 65 below the margin of 100
    draw(5 * 47, 0, "Welt");  // goes on where the run before ended
    draw(0, 83, "rot", {255, 0, 0});
    setFont(156);  // advance round(93.61) = 94, baseline round(129.87) = 130
    draw(10, 83, "gro\xE1", {255, 0, 0});
    EXPECT_EQ(finish(), pageStart +
                            "BT\n/F0 78 Tf\n.2 Tc\n100 -165 Td\n(Hallo)Tj\n(Welt)Tj\n"
                            "1 0 0 rg\n0 -83 Td\n(rot)Tj\n"
                            "/F0 156 Tf\n.4 Tc\n10 -65 Td\n(gro\xE1)Tj\nET\n");

    surface_.begin();  // nothing is left over from the page before
    draw(0, 0, "x");
    surface_.fillRectangle(-200, 50, 1000, 10, {});
    EXPECT_EQ(finish(), pageStart + "BT\n/F0 156 Tf\n.4 Tc\n100 -230 Td\n(x)Tj\nET\n0 -160 900 10 re f\n");
}

// Liberation Sans: i is 455 units wide, m 1706; in thousandths of the size what is short of whole pixels.
TEST_F(PdfContent, PutsTextOfProportionalFontsOnThePixel) {
    surface_.setFont({"Liberation Sans", platform::charsetOem, 83, false, false, false});
    EXPECT_EQ(surface_.textWidth("im"), 18 + 69);
    draw(0, 0, "im");
    draw(18 + 69, 0, "i");
    EXPECT_EQ(finish(), pageStart + "BT\n/F0 83 Tf\n100 -175 Td\n[(i)5.133(m)1.675]TJ\n87 0 Td\n[(i)5.133]TJ\nET\n");
}

// The cell of one "x" at 78 pixels is 47 wide, 88 high, its baseline 65 below the top, its underline 15 below that.
TEST_F(PdfContent, TurnsTextAboutThePointItIsDrawnAt) {
    const std::string start = pageStart + "BT\n/F0 78 Tf\n.2 Tc\n";
    for (const auto& [rotation, operators] : std::initializer_list<std::pair<int, const char*>>{
             {90, "0 1 -1 0 1165 -2100 Tm\n(xx)Tj\nET\n1180 -2100 3 94 re f\n"},
             {180, "-1 0 0 -1 1100 -2035 Tm\n(xx)Tj\nET\n1006 -2020 94 3 re f\n"},
             {270, "0 -1 1 0 1035 -2100 Tm\n(xx)Tj\nET\n1017 -2194 3 94 re f\n"}}) {
        surface_.begin();
        setFont(78, rotation, true);
        draw(1000, 2000, "xx");
        EXPECT_EQ(finish(), start + operators);
    }
    // Going on where a run ended, and back to text that is not turned.
    surface_.begin();
    setFont(78, 90);
    draw(1000, 2000, "a");
    draw(1000, 2000 - 47, "b");
    setFont(78);
    draw(1000, 2000, "c");
    EXPECT_EQ(finish(), start + "0 1 -1 0 1165 -2100 Tm\n(a)Tj\n(b)Tj\nET\nBT\n1100 -2165 Td\n(c)Tj\nET\n");
}

TEST_F(PdfContent, KeepsTheShapeOfCharactersOnOblongPixels) {
    const std::string start = ".12 0 0 .06 0 841.89 cm\nBT\n/F0 156 Tf\n";
    begin(1200);
    setFont(156);  // 156 pixels down are as long as 78 across
    draw(0, 0, "ab");
    EXPECT_EQ(finish(), start + "50 Tz\n.4 Tc\n100 -230 Td\n(ab)Tj\nET\n");
    begin(1200);
    setFont(156, 90);
    draw(0, 1000, "ab");
    EXPECT_EQ(finish(), start + ".4 Tc\n0 1 -.5 0 165 -1100 Tm\n(ab)Tj\nET\n");
}

TEST_F(PdfContent, PicturesFillTheirBoxAndAreMirrored) {
    const auto picture = std::make_shared<platform::Picture>(pictures::makePicture(2, 2, 1));
    const auto other = std::make_shared<platform::Picture>(*picture);
    surface_.drawPicture(picture, 10, 4, 8, 6);
    surface_.drawPicture(other, 18, 4, -8, 6);
    surface_.drawPicture(picture, 18, 10, -8, -6);
    EXPECT_EQ(finish(), pageStart +
                            "q 8 0 0 6 110 -110 cm /P0 Do Q\nq -8 0 0 6 118 -110 cm /P1 Do Q\n"
                            "q -8 0 0 -6 118 -104 cm /P0 Do Q\n");
}

TEST(PdfText, WritesNumbersInTheirShortestForm) {
    std::string text;
    for (const double value : {0.0, -0.0001, -0.5, 100.0, 0.9996, 72.0 / 203, -12.340}) {
        platform_linux::pdf::appendReal(text, value, 3);
        text += ' ';
    }
    platform_linux::pdf::appendReal(text, 10, 0);
    EXPECT_EQ(text, "0 0 -.5 100 1 .355 -12.34 10");
}

TEST(PdfText, WritesTextStringsAndDates) {
    using platform_linux::pdf::textString;
    EXPECT_EQ(textString("a(b)\\"), "(a\\(b\\)\\\\)");
    EXPECT_EQ(textString("\u00E4\u20AC\U0001F600"), "<FEFF00E420ACD83DDE00>");
    // A lone lead byte, an overlong form, a surrogate, a text cut off.
    EXPECT_EQ(textString("\xC3x\xC0\x80"), "<FEFFFFFD0078FFFDFFFD>");
    EXPECT_EQ(textString("\xED\xA0\x80\xE2\x82"), "<FEFFFFFDFFFDFFFDFFFDFFFD>");
    EXPECT_EQ(platform_linux::pdf::dateString(1767323045), "(D:20260102030405Z)");
}

}  // namespace
