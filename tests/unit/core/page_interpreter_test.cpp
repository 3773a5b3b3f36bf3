#include <gtest/gtest.h>

#include <random>

#include "barcode/clsLinearBarCodes.h"
#include "report/barcode_macro.h"
#include "report/page_cutter.h"
#include "report/page_interpreter.h"
#include "unit/support/fake_platform.h"

namespace {

using platform::Color;
using platform::TextRole;
using testing_support::DrawnText;
using testing_support::FakePlatform;

// Prints pages through the interpreter; positions are twips. Left margin 100, top offset 500, line spacing 222.
class PageInterpreterTest : public ::testing::Test {
protected:
    PageInterpreterTest() {
        state.settings.lngLinkerRand = 100;
        state.curFontSize = runtime::Currency::fromUnits(120000);
        printer.Font(printer::FontStyle{});
    }

    std::vector<DrawnText> print(std::string_view page) {
        state.blnZeileBegonnen = false;
        printer.CurrentX(state.settings.lngLinkerRand);
        printer.CurrentY(state.settings.lngKopfabstand);
        report::PageInterpreter(session, printer, state, [] {}).DoPage(page);
        printer.NewPage();
        return host.spooler.device.pages().back().texts;
    }

    FakePlatform host;
    session::Session session{host.ports};
    printer::Printer printer{host.spooler, "Laser 1", "TEST.OUT"};
    report::JobState state;
};

struct Place {
    int x;
    int y;
    std::string text;
    bool operator==(const Place&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Place& place) {
    return out << place.text << " (" << place.x << "; " << place.y << ")";
}

std::vector<Place> places(const std::vector<DrawnText>& texts) {
    std::vector<Place> result;
    for (const DrawnText& text : texts) {
        result.push_back({text.x, text.y, text.text});
    }
    return result;
}

// At 1440 pixels per inch 12 pt are 240 pixels, and a character is 144 wide.
TEST_F(PageInterpreterTest, LinesLandOnTheirTwip) {
    EXPECT_EQ(places(print("eins\r\nzwei ^FEfett^FA drei\r\rvier\n\x1B"
                           "fünf\tsechs")),
              (std::vector<Place>{{100, 500, "eins"},
                                  {100, 722, "zwei "},
                                  {824, 726, "fett"},
                                  {820, 722, "fett"},
                                  {1396, 722, " drei"},
                                  {100, 722, "vier"},
                                  {100, 944, "fünf\tsechs"}}));
}

TEST_F(PageInterpreterTest, PitchAndWideTypeChooseExactSizes) {
    struct Row {
        const char* macros;
        int emHeight;  // twips
        int y;
    };
    const std::vector<Row> rows = {{"^10", 240, 500},       {"^12", 187, 500},          {"^15", 158, 500},
                                   {"^17", 134, 500},       {"^20", 120, 500},          {"^10^BE", 480, 300},
                                   {"^12^BE", 401, 300},    {"^15^BE", 317, 300},       {"^17^BE", 281, 300},
                                   {"^20^BE", 240, 300},    {"^10^BE^10", 120, 300},    {"^10^BE^20", 240, 300},
                                   {"^10^BE^12", 401, 300}, {"^10^BE^BE", 480, 300},    {"^10^BE^BA", 240, 500},
                                   {"^12^BA", 187, 500},    {"^10^BE^10^BA", 120, 500}, {"^12^BE^BA", 187, 500}};
    for (const auto& row : rows) {
        const auto texts = print(std::string("^BA^10") + row.macros + "x^BA^10");
        ASSERT_EQ(texts.size(), 1U) << row.macros;
        EXPECT_EQ(texts[0].font.emHeight, row.emHeight) << row.macros;
        EXPECT_EQ(texts[0].y, row.y) << row.macros;
    }
    // A size that no pitch has stays, while wide type is switched all the same.
    state.curFontSize = runtime::Currency::fromUnits(100000);
    printer.FontSize(state.curFontSize);
    const auto odd = print("^BEx^BAy");
    EXPECT_EQ(odd[0].font.emHeight, 200);
    EXPECT_EQ(odd[0].y, 300);
    EXPECT_EQ(odd[1].y, 500);
}

TEST_F(PageInterpreterTest, AttributesAndColors) {
    const auto texts = print("^KE^UEa^KA^UAb^CRc^CGd^CHe^CBf^CMg^CCh^CSi^EEj^EAk");
    EXPECT_TRUE(texts[0].font.italic && texts[0].font.underline && !texts[0].font.bold);
    EXPECT_FALSE(texts[1].font.italic || texts[1].font.underline);
    const std::vector<Color> expected{{255, 0, 0},   {0, 255, 0}, {255, 255, 0}, {0, 0, 255}, {255, 0, 255},
                                      {0, 255, 255}, {0, 0, 0},   {0, 0, 0},     {0, 0, 0}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(texts[i + 2].color, expected[i]) << texts[i + 2].text;
    }
}

TEST_F(PageInterpreterTest, ScriptsShadowsAndDoubleStrike) {
    EXPECT_EQ(places(print("a^HEb^TEc^TAd")),
              (std::vector<Place>{{100, 500, "a"}, {244, 430, "b"}, {388, 570, "c"}, {532, 500, "d"}}));
    EXPECT_EQ(places(print("^BE^HEa^BA^HA"))[0], (Place{100, 230, "a"}));
    // Bold type is not struck twice where it is raised, and hides the shadow.
    EXPECT_EQ(places(print("^FE^HEa^HA^SEb^FA^SA")),
              (std::vector<Place>{{100, 430, "a"}, {248, 504, "b"}, {244, 500, "b"}}));
    for (const auto& [macro, offset] : {std::pair{"^SE", 2}, {"^OE", 4}, {"^OA", 6}}) {
        const auto texts = print(std::string(macro) + "x^SA");
        ASSERT_EQ(texts.size(), 2U);
        EXPECT_EQ(texts[0].x, 100 + offset);
        EXPECT_EQ(texts[0].y, 500 + offset);
        EXPECT_EQ(texts[0].role, TextRole::effect);
        EXPECT_EQ(texts[1].x, 100);
        EXPECT_EQ(texts[1].role, TextRole::content);
    }
}

TEST_F(PageInterpreterTest, IndentationStartsWithTheNextLineInTheSizeItWasSetIn) {
    const auto texts = print(
        "^UEa^LR\x05"
        "b\r\n^20c\rd\ne^LR" +
        std::string(1, '\0') + "\nf");
    EXPECT_EQ(places(texts), (std::vector<Place>{{100, 500, "a"},
                                                 {244, 500, "b"},
                                                 {100, 722, "     "},
                                                 {820, 722, "c"},
                                                 {100, 722, "d"},
                                                 {100, 944, "     "},
                                                 {820, 944, "e"},
                                                 {100, 1166, "f"}}));
    EXPECT_FALSE(texts[2].font.underline);
    EXPECT_EQ(texts[2].font.emHeight, 240);
    EXPECT_TRUE(texts[3].font.underline);
    EXPECT_EQ(texts[3].font.emHeight, 120);
}

TEST_F(PageInterpreterTest, UnknownMacrosPrintTheirCodeAndParametersAreConsumed) {
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"^feX", "feX"},  {"^XY", "XY"},      {"a^", "a"},         {"a^F", "aF"},          {"^^FEx^FA", "xx"},
        {"^PLabc", "bc"}, {"^TR2x", "x"},     {"^LSx", "x"},       {"^GZ0", "0"},          {"^GY7x", "x"},
        {"^GRGR", "GR"},  {"^GA1^GZ9a", "a"}, {"^BC1,2,\\x", "x"}, {"^BC1,2,A B\\x", "x"}, {"^BC1,2,ABC", ""},
        {"^LR", ""},      {"^BCx", ""},       {"a\fb", "a"},       {"a^LR\x0Cx^LR", "ax"}};
    for (const auto& [page, expected] : rows) {
        std::string printed;
        for (const DrawnText& text : print(page)) {
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

TEST_F(PageInterpreterTest, TheLineAfterTheLastIsNotPrinted) {
    std::string page;
    for (int line = 1; line <= 80; ++line) {
        page += std::to_string(line) + "\r\n";
    }
    const auto texts = print(page);
    ASSERT_EQ(texts.size(), 72U);
    EXPECT_EQ(texts.back().text, "72");
    EXPECT_EQ(texts.back().y, 500 + 71 * 222);
}

TEST_F(PageInterpreterTest, PassesDrawTextOnce) {
    state.blnTextAusgeben = false;
    EXPECT_TRUE(print("^FEa^FA^SEb^SA^BC1,1,X\\").empty());
    EXPECT_EQ(printer.CurrentX(), 0);
    state.blnTextAusgeben = true;
    state.blnGrafikAusgeben = false;
    EXPECT_EQ(places(print("a^GZ1")), (std::vector<Place>{{100, 500, "a"}}));
}

// "*A*" at 1440 pixels per inch: narrow elements of 14, wide ones of 42 pixels.
TEST_F(PageInterpreterTest, BarcodesStandAtTheirOwnPlaceInBothPasses) {
    for (const bool text : {true, false}) {
        state.blnTextAusgeben = text;
        const auto texts = print("a^BC1.5,2,A\\b");
        EXPECT_EQ(texts.size(), text ? 2U : 0U);
        const auto& bars = host.spooler.device.pages().back().rectangles;
        ASSERT_EQ(bars.size(), 15U);
        EXPECT_EQ(bars.front(), (testing_support::DrawnRectangle{2880, 2160, 14, 216, {}}));
        EXPECT_EQ(bars.back(), (testing_support::DrawnRectangle{2880 + 658 - 14, 2160, 14, 216, {}}));
    }
    state.blnTextAusgeben = true;
    EXPECT_EQ(places(print("a^BC1.5,2,A\\b")), (std::vector<Place>{{100, 500, "a"}, {244, 500, "b"}}));
}

TEST_F(PageInterpreterTest, ABarcodeBeyondThePrintableAreaIsDrawnAndReported) {
    session.log.debugging(true);
    print("^BC-.01,7.5,A\\");
    EXPECT_FALSE(host.spooler.device.pages().back().rectangles.empty());
    EXPECT_NE(host.system.files["KRVWinPr.LOG"].find(
                  ">       Barcode ragt über den bedruckbaren Bereich hinaus: oben 0,3 mm, rechts 0,6 mm"),
              std::string::npos)
        << host.system.files["KRVWinPr.LOG"];
}

TEST_F(PageInterpreterTest, RefusedBarcodesAreErrorsOfThePage) {
    struct Row {
        const char* page;
        int number;
    };
    for (const Row& row : {Row{"^BC1,2,abc\\", barcode::clsLinearBarCodes::invalidCharacter},
                           Row{"^BC1,2,A\nB\\", barcode::clsLinearBarCodes::invalidCharacter},
                           Row{"^BC1,9e9,A\\", runtime::errOverflow}}) {
        try {
            print(row.page);
            ADD_FAILURE() << row.page;
        } catch (const runtime::Error& error) {
            EXPECT_EQ(error.number(), row.number) << row.page;
        }
    }
}

TEST_F(PageInterpreterTest, RandomBytesNeitherCrashNorHang) {
    std::mt19937 random(20261121);
    const std::string_view likely = "^^^^^BCFEUAKE10121517HTSOLRTRPLGZGR,.\\\n\r\f\x1B";
    for (int round = 0; round < 400; ++round) {
        std::string page(random() % 4000, ' ');
        for (char& c : page) {
            c = random() % 3 == 0 ? static_cast<char>(random()) : likely[random() % likely.size()];
        }
        state.intMaxZeilen = static_cast<std::int16_t>(random() % 2 == 0 ? 72 : 32767);
        try {
            report::PageCutter cutter(page);
            while (const auto cut = cutter.nextPage()) {
                print(*cut);
            }
        } catch (const runtime::Error& error) {
            EXPECT_TRUE(error.number() == runtime::errOverflow ||
                        error.number() == barcode::clsLinearBarCodes::invalidCharacter)
                << error.what();
        }
    }
}

TEST(BarcodeMacro, CommasSplitTheFieldsAndLeaveTheData) {
    struct Row {
        const char* fields;
        float y;
        float x;
        const char* data;
    };
    const std::vector<Row> rows = {{"1.5,2,ABC", 1.5F, 2, "ABC"},
                                   {"1,5,2,ABC", 1, 5, "2ABC"},
                                   {",,A", 0, 0, "A"},
                                   {"x,2y,A,,B", 0, 2, "AB"},
                                   {"1", 1, 0, ""},
                                   {"", 0, 0, ""}};
    for (const auto& row : rows) {
        const auto macro = report::readBarcodeMacro(row.fields);
        EXPECT_EQ(macro.y, row.y) << row.fields;
        EXPECT_EQ(macro.x, row.x) << row.fields;
        EXPECT_EQ(macro.data, row.data) << row.fields;
    }
}

std::vector<std::pair<std::string, std::string>> cut(std::string_view text) {
    std::vector<std::pair<std::string, std::string>> result;
    report::PageCutter cutter(text);
    while (const auto page = cutter.nextPage()) {
        result.emplace_back(*page, cutter.requestedTray());
    }
    return result;
}

using Pages = std::vector<std::pair<std::string, std::string>>;

TEST(PageCutter, FormFeedsEndPagesButNotAsIndentation) {
    EXPECT_EQ(cut(""), Pages{});
    EXPECT_EQ(cut("a"), (Pages{{"a", ""}}));
    EXPECT_EQ(cut("a\f"), (Pages{{"a", ""}}));
    EXPECT_EQ(cut("\fb\f\f"), (Pages{{"", ""}, {"b", ""}, {"", ""}}));
    EXPECT_EQ(cut("^LR\fa\fb"), (Pages{{"^LR\fa", ""}, {"b", ""}}));
    EXPECT_EQ(cut("x^LR\f"), (Pages{{"x^LR", ""}}));
    EXPECT_EQ(cut("^LR\f^LR\fa"), (Pages{{"^LR\f^LR\fa", ""}}));
    // Behind a page break the macro must stand in the remaining text.
    EXPECT_EQ(cut("a\fLR\fb"), (Pages{{"a", ""}, {"LR", ""}, {"b", ""}}));
}

TEST(PageCutter, TheLastTrayMacroOfAPageDecides) {
    EXPECT_EQ(cut("a\f^TR1b^TR3c\fd\f^TRXe\f^TR"),
              (Pages{{"a", ""}, {"^TR1b^TR3c", "3"}, {"d", "3"}, {"^TRXe", "3"}, {"^TR", "3"}}));
    EXPECT_EQ(cut("^TR4"), (Pages{{"^TR4", "1"}}));
}

}  // namespace
