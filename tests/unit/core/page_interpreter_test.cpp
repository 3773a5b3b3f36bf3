#include "report/barcode_macro.h"
#include "report/page_cutter.h"
#include "unit/support/core_test.h"

namespace {

using platform::TextRole;
using testing_support::Lines;
using namespace std::string_view_literals;

class PageInterpreterTest : public testing_support::PageTest {
protected:
    // What is printed where: "text x,y".
    Lines places(std::string_view page) {
        Lines result;
        for (const auto& text : print(page).texts) {
            result.push_back(text.text + " " + std::to_string(text.x) + "," + std::to_string(text.y));
        }
        return result;
    }
};

TEST_F(PageInterpreterTest, LinesLandOnTheirTwip) {
    EXPECT_EQ(places("eins\r\nzwei ^FEfett^FA drei\r\rvier\n\x1B"
                     "fünf\tsechs"),
              (Lines{"eins 100,500", "zwei  100,722", "fett 824,726", "fett 820,722", " drei 1396,722", "vier 100,722",
                     "fünf\tsechs 100,944"}));
    state.intMaxZeilen = 2;
    EXPECT_EQ(places("a\nb\nc"), (Lines{"a 100,500", "b 100,722"}));
}

TEST_F(PageInterpreterTest, PitchAndWideTypeChooseExactSizes) {
    using Row = std::tuple<const char*, int, int>;
    for (const auto& [macros, emHeight, y] :
         {Row{"^10", 240, 500}, Row{"^12", 187, 500}, Row{"^15", 158, 500}, Row{"^17", 134, 500}, Row{"^20", 120, 500},
          Row{"^10^BE", 480, 300}, Row{"^12^BE", 401, 300}, Row{"^15^BE", 317, 300}, Row{"^17^BE", 281, 300},
          Row{"^20^BE", 240, 300}, Row{"^10^BE^10", 120, 300}, Row{"^10^BE^20", 240, 300}, Row{"^10^BE^15", 317, 300},
          Row{"^10^BE^BE", 480, 300}, Row{"^10^BE^BA", 240, 500}, Row{"^12^BA", 187, 500},
          Row{"^10^BE^10^BA", 120, 500}, Row{"^17^BE^BA", 134, 500}}) {
        const auto text = print(std::string("^BA^10") + macros + "x^BA^10").texts.at(0);
        EXPECT_EQ(std::tuple(text.font.emHeight, text.y), std::tuple(emHeight, y)) << macros;
    }
    // A size that no pitch has stays, while wide type is switched all the same.
    state.type.curFontSize = runtime::Currency::fromUnits(100000);
    EXPECT_EQ(places("^BEx^BAy"), (Lines{"x 100,300", "y 220,500"}));
}

TEST_F(PageInterpreterTest, AttributesAndColors) {
    std::string seen;
    for (const auto& text : print("^KE^UEa^KA^UAb^CRc^CGd^CHe^CBf^CMg^CCh^CSi^FEj").texts) {
        seen +=
            text.text + (text.font.italic ? "/" : "") + (text.font.underline ? "_" : "") + (text.font.bold ? "*" : "");
        seen += std::string(text.color.red / 255, 'r') + std::string(text.color.green / 255, 'g');
        seen += std::string(text.color.blue / 255, 'b');
    }
    EXPECT_EQ(seen, "a/_bcrdgergfbgrbhgbij*j*");
}

TEST_F(PageInterpreterTest, ScriptsShadowsAndDoubleStrike) {
    EXPECT_EQ(places("a^HEb^TEc^TAd"), (Lines{"a 100,500", "b 244,430", "c 388,570", "d 532,500"}));
    EXPECT_EQ(places("^BE^HEa^BA^HA"), Lines{"a 100,230"});
    // Bold type is not struck twice where it is raised, and hides the shadow.
    EXPECT_EQ(places("^FE^HEa^HA^SEb^FA^SA"), (Lines{"a 100,430", "b 248,504", "b 244,500"}));
    EXPECT_EQ(places("^SEx^OEy^OAz^SA"),
              (Lines{"x 102,502", "x 100,500", "y 248,504", "y 244,500", "z 394,506", "z 388,500"}));
    const auto texts = print("^SEx^SA").texts;
    EXPECT_EQ(std::tuple(texts[0].role, texts[1].role), std::tuple(TextRole::effect, TextRole::content));
}

TEST_F(PageInterpreterTest, IndentationStartsWithTheNextLineInTheSizeItWasSetIn) {
    EXPECT_EQ(places("^UEa^LR\x05"
                     "b\r\n^20c\rd\ne^LR\0\nf"sv),
              (Lines{"a 100,500", "b 244,500", "      100,722", "c 820,722", "d 100,722", "      100,944", "e 820,944",
                     "f 100,1166"}));
    const auto texts = print("^UE^12^LR\x05\n^20c").texts;
    EXPECT_TRUE(!texts[0].font.underline && texts[1].font.underline);
    EXPECT_EQ(std::tuple(texts[0].font.emHeight, texts[1].font.emHeight), std::tuple(187, 120));
}

TEST_F(PageInterpreterTest, UnknownMacrosPrintTheirCodeAndParametersAreConsumed) {
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"^feX", "feX"},  {"^XY", "XY"},      {"a^", "a"},         {"a^F", "aF"},          {"^^FEx^FA", "xx"},
        {"^PLabc", "bc"}, {"^TR2x", "x"},     {"^LSx", "x"},       {"^GZ0", "0"},          {"^GY7x", "x"},
        {"^GRGR", "GR"},  {"^GA1^GZ9a", "a"}, {"^BC1,2,\\x", "x"}, {"^BC1,2,A B\\x", "x"}, {"^BC1,2,ABC", ""},
        {"^LR", ""},      {"^BCx", ""},       {"a\fb", "a"},       {"^EEa^EAb", "ab"},     {"a^LR\x0Cx^LR", "ax"}};
    for (const auto& [page, expected] : rows) {
        std::string printed;
        for (const auto& text : print(page).texts) {
            printed += text.text;
        }
        EXPECT_EQ(printed, expected) << page;
    }
}

TEST_F(PageInterpreterTest, OrientationIsAlwaysPortrait) {
    host.spooler.device.options[platform::PageOption::orientation] = 2;
    print("^LSx");
    EXPECT_EQ(printer.Option(platform::PageOption::orientation), 1);
}

TEST_F(PageInterpreterTest, PassesDrawTextOnce) {
    state.blnTextAusgeben = false;
    EXPECT_EQ(places("^FEa^FA^SEb^SA^BC1,1,X\\"), Lines{});
    EXPECT_EQ(print("^LR\x05\nc^LR\0"sv).texts.at(0).role, TextRole::effect) << "the other pass has it as text";
    state.blnTextAusgeben = true;
    state.blnGrafikAusgeben = false;
    EXPECT_EQ(places("a^GZ1"), Lines{"a 100,500"});
}

// "*A*" at 300 pixels to the inch: narrow elements of 3, wide ones of 9 pixels.
TEST_F(PageInterpreterTest, BarcodesStandAtTheirOwnPlaceInBothPasses) {
    host.spooler.device.capabilities = testing_support::oblongPixels;
    for (const bool text : {true, false}) {
        state.blnTextAusgeben = text;
        EXPECT_EQ(places("a^BC1.5,2,A\\b"), text ? (Lines{"a 21,208", "b 81,208"}) : Lines{});
        const auto bars = host.spooler.device.pages().back().rectangles;
        ASSERT_EQ(bars.size(), 15U);
        EXPECT_EQ(bars.front(), (testing_support::DrawnRectangle{600, 900, 3, 90, {}}));
        EXPECT_EQ(bars.back(), (testing_support::DrawnRectangle{600 + 141 - 3, 900, 3, 90, {}}));
    }
    EXPECT_EQ(testing_support::failureOf([&] { print("^BC1,2,A\nB\\"); }).number(), 5970);
    EXPECT_EQ(testing_support::failureOf([&] { print("^BC1,9e9,A\\"); }).number(), runtime::errOverflow);
}

TEST_F(PageInterpreterTest, ABarcodeBeyondThePrintableAreaIsDrawnAndReported) {
    host.spooler.device.capabilities = testing_support::oblongPixels;
    session.log.debugging(true);
    for (const auto& [page, edges] : {std::pair{"^BC-.01,7.5,A\\", "oben 0,3 mm, rechts 1 mm"},
                                      {"^BC11.3,-.02,A\\", "links 0,6 mm, unten 2,3 mm"}}) {
        EXPECT_FALSE(print(page).rectangles.empty());
        EXPECT_EQ(host.logLines().back(),
                  std::string(">       Barcode ragt über den bedruckbaren Bereich hinaus: ") + edges);
    }
}

TEST(BarcodeMacro, CommasSplitTheFieldsAndLeaveTheData) {
    using Row = std::tuple<const char*, float, float, const char*>;
    for (const auto& [fields, y, x, data] :
         {Row{"1.5,2,ABC", 1.5F, 2, "ABC"}, Row{"1,5,2,ABC", 1, 5, "2ABC"}, Row{",,A", 0, 0, "A"},
          Row{"x,2y,A,,B", 0, 2, "AB"}, Row{"1", 1, 0, ""}, Row{"", 0, 0, ""}}) {
        const auto macro = report::readBarcodeMacro(fields);
        EXPECT_EQ(std::tuple(macro.y, macro.x, macro.data), std::tuple(y, x, data)) << fields;
    }
}

// The pages, each with "|" and its tray behind it.
std::string cut(std::string_view text) {
    std::string result;
    std::string tray;
    report::PageCuts pages;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        pages.cutOn(text.substr(0, length), false);
    }
    pages.cutOn(text, true);
    for (std::size_t number = 1; number <= pages.count(); ++number) {
        report::requestTray(pages.page(number), tray);
        result += std::string(pages.page(number)) + "|" + tray + " ";
    }
    return result;
}

TEST(PageCutter, FormFeedsEndPagesButNotAsIndentationAndTheLastTrayMacroDecides) {
    using Row = std::pair<const char*, const char*>;
    for (const auto& [text, pages] :
         {Row{"", ""}, Row{"a", "a| "}, Row{"a\f", "a| "}, Row{"\fb\f\f", "| b| | "}, Row{"^LR\fa\fb", "^LR\fa| b| "},
          Row{"x^LR\f", "x^LR| "}, Row{"^LR\f^LR\fa", "^LR\f^LR\fa| "},
          // Behind a page break the macro must stand in the remaining text.
          Row{"a\fLR\fb", "a| LR| b| "}, Row{"^TR4", "^TR4|1 "},
          Row{"a\f^TR1b^TR3c\fd\f^TRXe\f^TR", "a| ^TR1b^TR3c|3 d|3 ^TRXe|3 ^TR|3 "}}) {
        EXPECT_EQ(cut(text), pages);
    }
}

}  // namespace
