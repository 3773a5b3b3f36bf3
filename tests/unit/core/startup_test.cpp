#include <gtest/gtest.h>

#include "startup/MMain.h"
#include "startup/clsArguments.h"
#include "unit/support/fake_platform.h"

namespace {

using testing_support::FakePlatform;
using Arguments = std::vector<std::string>;

Arguments split(std::string_view tail) {
    const startup::clsArguments arguments(tail);
    return {arguments.begin(), arguments.end()};
}

TEST(Arguments, AreSplitAtSingleSpaces) {
    EXPECT_EQ(split("  a b  "), (Arguments{"a", "b"}));
    EXPECT_EQ(split("a  KEINEGRAFIK"), (Arguments{"a", "", "KEINEGRAFIK"}));
    EXPECT_EQ(split(R"(a "Laser 1" b)"), (Arguments{"a", "Laser 1", "b"}));
    EXPECT_EQ(split(R"(ab"cd ef"gh)"), (Arguments{"cd efgh"}));
    EXPECT_EQ(split(R"(a "b c  )"), (Arguments{"a", "b c"}));
    EXPECT_EQ(split(R"(a "" b "")"), (Arguments{"a", "", "b"}));
    EXPECT_EQ(split(R"("a""b")"), (Arguments{"b"}));
    EXPECT_EQ(split("a\tb"), (Arguments{"a\tb"}));
    EXPECT_EQ(split("   "), Arguments{});
}

TEST(Arguments, AreReadAndRemovedByPositionAndName) {
    startup::clsArguments arguments("/WAIT a /wait b c");
    arguments.Remove("/WAIT");
    EXPECT_EQ(arguments.Count(), 3U);
    EXPECT_EQ(arguments.Item(2), "b");
    EXPECT_EQ(arguments.Item(0), "");
    EXPECT_EQ(arguments.Item(4), "");
    arguments.Remove(2);
    arguments.Remove(9);
    EXPECT_EQ(Arguments(arguments.begin(), arguments.end()), (Arguments{"a", "c"}));
}

class StartUpTest : public ::testing::Test {
protected:
    void start(const std::string& tail) {
        host.system.tail = tail;
        startup::MMain::Main(host.ports);
    }

    FakePlatform host;
};

TEST_F(StartUpTest, WithoutArgumentsTheUsageIsShown) {
    start("/DEBUG");
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    const auto& box = host.dialogs.boxes[0];
    EXPECT_EQ(box.text,
              "KRVWinPr V. 3.0.0 - Druckertreiber für Korvano\r\n\r\n"
              "Parameter: KRVWinPr [/DRUCKERAUSWAHL| [/INVERT] [/PRINTGRAPHIC <Druckertreiber>] <Datei> "
              "[<Grafikdatei>|KEINEGRAFIK] [<Druckertreiber>]] [/WAIT] [/TWOPASS]");
    EXPECT_EQ(box.title, "KRVWinPr");
    EXPECT_EQ(box.icon, platform::Icon::none);
    const Arguments lines = host.logLines();
    EXPECT_EQ(Arguments(lines.end() - 4, lines.end()),
              (Arguments{"> TwoPass: Nein", "> keine Argumente", "> Programm regulär beendet!", ""}));
    EXPECT_FALSE(host.system.files.contains("KRVWINPR.OK"));
}

TEST_F(StartUpTest, EveryStartRecordsTheProgramAndASilentOneTouchesNoFile) {
    start("fehlt.out");
    EXPECT_EQ(host.settings.keys.at("SOFTWARE\\VELMORA\\KRVWINPR\\3.0"),
              (std::map<std::string, platform::SettingsValue>{
                  {"RUNPATH", "C:\\KORVANO"}, {"EXEPATH", "C:\\Programme\\KRVWinPr"}, {"EXEVERSION", "3.0.0"}}));
    EXPECT_TRUE(host.system.files.empty());
}

TEST_F(StartUpTest, SwitchesCountInUpperCaseAnywhereOnTheLine) {
    host.system.files["a.out"] = "x";
    start("/debug");
    EXPECT_TRUE(host.logLines().empty());
    start("/wait /twopass a.out /DEBUG");
    EXPECT_TRUE(host.logged("> Debuglevel: 0") && host.logged("> TwoPass: Nein"));
    EXPECT_TRUE(host.logged(
        ">   DoReport (sDateiname='/wait', sGrafikname='/twopass', sDruckerTreiber='a.out', blnWait='Falsch')"));
    start("a.out /DEBUG2 /TWOPASS /WAIT");
    EXPECT_TRUE(host.logged("> Debuglevel: 2") && host.logged("> TwoPass: Ja"));
    EXPECT_TRUE(host.logged(">   DoReport (sDateiname='a.out', sGrafikname='', sDruckerTreiber='', blnWait='Wahr')"));
}

TEST_F(StartUpTest, ModesToComeSaySo) {
    for (const char* tail : {"/druckerauswahl", "/VORSCHAU a.out"}) {
        host.dialogs.boxes.clear();
        start(tail);
        ASSERT_EQ(host.dialogs.boxes.size(), 1U) << tail;
        EXPECT_NE(host.dialogs.boxes[0].text.find("noch nicht enthalten"), std::string::npos) << tail;
    }
    host.spooler.names.clear();
    host.dialogs.boxes.clear();
    start("/DRUCKERAUSWAHL");
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text, "Es sind keine Druckertreiber unter Windows eingerichtet!");
}

}  // namespace
