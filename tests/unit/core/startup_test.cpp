#include "graphics/MGrafikdruck.h"
#include "runtime/program.h"
#include "runtime/utf8.h"
#include "startup/arguments/clsArguments.h"
#include "startup/arguments/suggestion.h"
#include "unit/support/core_test.h"

namespace {

using graphics::MGrafikdruck::PixelSize;
using testing_support::Lines;
using StartUpTest = testing_support::CoreTest;

TEST(Arguments, AreSplitAtSingleSpaces) {
    using Row = std::pair<const char*, Lines>;
    for (const auto& [tail, expected] :
         {Row{"  a b  ", {"a", "b"}}, Row{"a  KEINEGRAFIK", {"a", "", "KEINEGRAFIK"}},
          Row{R"(a "Laser 1" b)", {"a", "Laser 1", "b"}}, Row{R"(ab"cd ef"gh)", {"cd efgh"}},
          Row{R"(a "b c  )", {"a", "b c"}}, Row{R"(a "" b "")", {"a", "", "b"}}, Row{R"("a""b")", {"b"}},
          Row{"a\tb", {"a\tb"}}, Row{"   ", {}}}) {
        const startup::clsArguments arguments(tail);
        EXPECT_EQ(Lines(arguments.begin(), arguments.end()), expected) << tail;
    }
}

TEST(Arguments, AreReadAndRemovedByPositionAndName) {
    startup::clsArguments arguments("/WAIT a /wait b c");
    arguments.Remove("/WAIT");
    EXPECT_EQ(arguments.Item(2), "b");
    EXPECT_EQ(arguments.Item(0) + arguments.Item(4), "");
    arguments.Remove(2);
    arguments.Remove(9);
    EXPECT_EQ(Lines(arguments.begin(), arguments.end()), (Lines{"a", "c"}));
}

TEST_F(StartUpTest, WithoutArgumentsTheUsageIsShown) {
    start("/DEBUG");
    EXPECT_EQ(lastBox(), "KRVWinPr V. " + std::string(runtime::programVersion) +
                             " - Druckertreiber für Korvano\r\n\r\n"
                             "Parameter: KRVWinPr [/DRUCKERAUSWAHL| [/INVERT] [/PRINTGRAPHIC <Druckertreiber>] <Datei> "
                             "[<Grafikdatei>|KEINEGRAFIK] [<Druckertreiber>]] [/WAIT] [/TWOPASS]");
    EXPECT_EQ(host.dialogs.boxes.at(0).title, "KRVWinPr");
    EXPECT_TRUE(host.logged("> keine Argumente"));
    EXPECT_FALSE(host.system.files.contains("KRVWINPR.OK"));
}

TEST_F(StartUpTest, WordsAskForHelpWhereNoFileHasTheirName) {
    host.dialogs.atShell = true;
    for (const char* word : {"/?", "-h /DEBUG", "--help"}) {
        start(word);
        const std::string& help = host.dialogs.answered;
        EXPECT_TRUE(help.starts_with("KRVWinPr V. 3.0.0 - Druckertreiber für Korvano\n\nParameter: KRVWinPr [/DRUCK"));
        EXPECT_NE(help.find("\n  C:\\Daten\\Nicht gedruckt\\\n"), std::string::npos);
        std::istringstream lines(help);
        for (std::string line; std::getline(lines, line);) {
            const auto characters = std::ranges::count_if(line, [](char byte) { return (byte & 0xC0) != 0x80; });
            EXPECT_LT(characters, 80) << line;
        }
    }
    start("--VERSION");
    EXPECT_EQ(host.dialogs.answered, "KRVWinPr 3.0.0\n");
    EXPECT_TRUE(host.dialogs.boxes.empty() && host.dialogs.diagnostics.empty());
    host.dialogs.atShell = false;
    start("--help");
    EXPECT_TRUE(lastBox().ends_with("[/WAIT] [/TWOPASS]"));
    host.system.files["-h"] = "1";
    start("-h");
    start("--help KEINEGRAFIK");
    EXPECT_EQ(host.spooler.device.documents.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes.size(), 1U);
}

TEST(Suggestion, NamesWhatLooksLikeASwitchOrAModeAndNothingElse) {
    using Row = std::array<const char*, 3>;
    for (const auto& [first, second, expected] :
         {Row{"/wait", "/Wait", "/WAIT“ gemeint? Er gilt nur in Großbuchstaben."},
          Row{"-DEBUG2", "/debug2", "/DEBUG2“ gemeint? Er gilt nur in Großbuchstaben."},
          Row{"/TWOPAS", "/WTOPASS", "Ist der Schalter „/TWOPASS“ gemeint?"},
          Row{"/DEBGU", "/DEBU", "„/DEBUG“ gemeint?"},
          Row{"/DRUKERAUSWAHL", "/Druckersauswahl", "Ist „/DRUCKERAUSWAHL“ gemeint?"},
          Row{"/aufträge", "/AUFTRAG", "„/AUFTRAEGE“ gemeint?"}, Row{"-help", "--hlep", "Ist „--help“ gemeint?"},
          Row{"-?", "--?", "„/?“ gemeint?"}, Row{"-v", "/version", "„--version“ gemeint?"}}) {
        EXPECT_NE(startup::askWhatWasMeant(first, 1).find(expected), std::string::npos) << first;
        EXPECT_NE(startup::askWhatWasMeant(second, 1).find(expected), std::string::npos) << second;
    }
    for (const char* name : {"", "/", "-", "wait", "/wait/x", "/tmp/a.out", "/wait.out", "/tmp", "/home", "/mnt", "-x",
                             "\\wait", "/INVOICE", "/RECHNUNGEN-2026", "/WAR T"}) {
        EXPECT_EQ(startup::askWhatWasMeant(name, 1), "") << name;
    }
    EXPECT_EQ(startup::askWhatWasMeant("/vorschau", 2), "Ist „/VORSCHAU“ gemeint? Das gilt nur als erstes Argument.");
    EXPECT_EQ(startup::askWhatWasMeant("-h", 1), "Ist „-h“ gemeint? Das gilt nur allein.");
}

TEST_F(StartUpTest, AMissingFileThatLooksLikeASwitchIsAskedAbout) {
    host.system.files["a.out"] = "1";
    start("/wait a.out");
    EXPECT_TRUE(host.dialogs.diagnostics.back().ends_with(
        "Datei nicht gefunden: /wait (Ist der Schalter „/WAIT“ gemeint? Er gilt nur in Großbuchstaben.)"));
    start("a.out /twopass");
    EXPECT_NE(host.dialogs.diagnostics.back().find("(Ist der Schalter „/TWOPASS“ gemeint?"), std::string::npos);
    EXPECT_EQ(lastBox().find("gemeint"), std::string::npos) << lastBox();
    start("fehlt.out");
    EXPECT_EQ(host.dialogs.diagnostics.back().find("gemeint"), std::string::npos);
}

TEST_F(StartUpTest, WhoWatchesALongJobSeesHowFarItIs) {
    host.system.files["a.out"] = "1\f2\f3\f4\f\r\n";
    host.system.looksTake = 400;
    start("a.out");
    EXPECT_TRUE(host.dialogs.statusLines.empty());
    host.dialogs.isWatched = true;
    start("a.out");
    const Lines& lines = host.dialogs.statusLines;
    ASSERT_GT(lines.size(), 3U);
    EXPECT_EQ(lines[0], "Seite 2 von 4, 2 Seiten/s");
    EXPECT_TRUE(lines[lines.size() - 2].starts_with("Seite 4 von 4, 1 Seiten/s"))
        << "nothing lies behind the last page";
    EXPECT_TRUE(lines.back().starts_with("4 Seiten in ") && lines.back().ends_with(" s\n")) << lines.back();
    host.spooler.device.onBeginPage = [](std::size_t page) {
        if (page == 3) {
            throw runtime::Error(runtime::errPrinter);
        }
    };
    start("a.out");
    EXPECT_EQ(lines.back(), "") << "it did not print";
    host.system.files["a.out"] = "1";
    host.spooler.device.onBeginPage = nullptr;
    host.system.looksTake = 20;
    host.dialogs.statusLines.clear();
    start("a.out");
    EXPECT_TRUE(lines.empty());
}

TEST_F(StartUpTest, EveryStartRecordsTheProgramAndASilentOneTouchesNoFile) {
    start("fehlt.out");
    EXPECT_EQ(host.settings.keys.at("SOFTWARE\\VELMORA\\KRVWINPR\\3.0"),
              (std::map<std::string, platform::SettingsValue>{{"RUNPATH", "C:\\KORVANO"},
                                                              {"EXEPATH", "C:\\Programme\\KRVWinPr"},
                                                              {"EXEVERSION", runtime::programVersion}}));
    EXPECT_TRUE(host.system.files.empty());
}

TEST_F(StartUpTest, SwitchesCountInUpperCaseOnly) {
    start("/debug a.out");
    EXPECT_TRUE(host.logLines().empty());
    start("/wait /twopass a.out /DEBUG");
    EXPECT_TRUE(host.logged("> TwoPass: Nein"));
    EXPECT_TRUE(host.logged(
        ">   DoReport (sDateiname='/wait', sGrafikname='/twopass', sDruckerTreiber='a.out', blnWait='Falsch')"));
}

TEST_F(StartUpTest, InvertWritesTheFileAndFailuresReachTheUserAndTheSettingsAreKept) {
    host.addPicture("bild.tif", 2, 1);
    start("/invert bild.tif /DEBUG");
    EXPECT_EQ(host.imageFiles.pictures.at(host.system.files["bild.tif"]).pixels, std::vector<std::uint8_t>(6, 255));
    EXPECT_TRUE(host.logged("> Invertierungbeginn") && host.logged("> Invertierungende") && lastBox().empty());
    host.settings.commits = 0;
    start("/INVERT fehlt.bmp");
    EXPECT_EQ(lastBox(), "Laufzeitfehler '53':\r\n\r\nDatei nicht gefunden: fehlt.bmp");
    EXPECT_EQ(host.settings.commits, 1);
    host.system.unwritable.insert("bild.tif");
    start("/INVERT bild.tif");
    EXPECT_NE(lastBox().find("Laufzeitfehler '61'"), std::string::npos);
    start("/PRINTGRAPHIC");
    EXPECT_EQ(lastBox(), "Laufzeitfehler '53':\r\n\r\nDatei nicht gefunden: GRAFIK.PCX");
    EXPECT_FALSE(host.spooler.device.documents.back()->delivered);
}

TEST_F(StartUpTest, TheProgramForHostsInAnEmulatorBesideThisOneIsTold) {
    host.spooler.names.clear();
    start("/DRUCKERAUSWAHL");
    EXPECT_EQ(host.dialogs.boxes.size(), 1U) << "no printers";
    host.system.files["C:\\Programme\\KRVWINPR.COM"] = "";
    host.system.files["a.out"] = "1";
    start("/DRUCKERAUSWAHL");
    EXPECT_NE(host.dialogs.boxes.at(1).text.find("In C:\\Programme\\ liegt neben KRVWinPr.exe"), std::string::npos);
    start("a.out");
    EXPECT_EQ(host.dialogs.diagnostics, Lines{host.dialogs.boxes[1].text});
}

TEST_F(StartUpTest, AnErrorThatNoJobReportsIsOneForTheErrorReportsAndLetsAHostGo) {
    host.system.unwritable.insert("KRVWinPr.LOG");
    start("a.out /DEBUG");
    EXPECT_FALSE(host.system.files.contains("KRVWINPR.OK"));
    start("a.out /DEBUG /WAIT");
    const std::string report = "61 Datenträger voll: KRVWinPr.LOG";
    EXPECT_EQ(host.errorReports.reports, (Lines{report, report}));
    EXPECT_TRUE(host.system.files.contains("KRVWINPR.OK") && !host.errorReports.now.hostWaits);
}

TEST_F(StartUpTest, WhatIsDoneIsNotedForTheErrorReports) {
    host.system.files["a.out"] = "1\n2\n\f3\n4\n5";
    start("a.out KEINEGRAFIK \"Laser 1\" /WAIT");
    const platform::Activity& now = host.errorReports.now;
    EXPECT_STREQ(now.mode, "Bericht");
    EXPECT_STREQ(now.stretch, "Fertig melden");
    EXPECT_EQ(now.printFile.view(), "a.out");
    EXPECT_EQ(now.printer.view(), "Laser 1");
    EXPECT_EQ(now.page, 2U);
    EXPECT_EQ(now.position, 9U);
    EXPECT_FALSE(now.hostWaits);
}

TEST_F(StartUpTest, PrintGraphicFillsThePageOfTheNamedPrinter) {
    host.spooler.device.capabilities = testing_support::oblongPixels;
    host.spooler.names = {"Fax", "Laser 1"};
    host.spooler.byDefault = "Fax";
    host.addPicture("GRAFIK.PCX", 200, 100);
    start("/PRINTGRAPHIC \"LASER 1\" /DEBUG");
    const auto document = host.spooler.device.documents.back();
    EXPECT_EQ(document->printer + "/" + document->title, "Laser 1/GRAFIK.PCX");
    EXPECT_TRUE(document->delivered && document->pages.size() == 1);
    EXPECT_EQ(document->pages.at(0).texts.at(0).text, " ");
    EXPECT_EQ(document->pages[0].pictures.at(0).width, 2380);
    EXPECT_TRUE(host.logged(">   PrintGraphic (GRAFIK.PCX, LASER 1)"));

    host.addPicture("GRAFIK.PCX", 1, 100);
    start("/PRINTGRAPHIC Tinte");
    EXPECT_EQ(host.spooler.device.documents.back()->printer, "Fax");
    EXPECT_EQ(host.spooler.device.pages()[0].pictures.at(0).height, 6816);
    host.spooler.names.clear();
    start("/PRINTGRAPHIC");
    EXPECT_NE(lastBox().find("keine Windowsdruckertreiber"), std::string::npos);
    EXPECT_EQ(host.spooler.device.documents.size(), 2U);
}

TEST(Fit, KeepsProportionsAndAtLeastOnePixel) {
    using Row = std::array<PixelSize, 3>;
    for (const auto& [picture, page, expected] :
         {Row{{{3, 2}, {101, 500}, {101, 67}}}, Row{{{1, 100000}, {1000, 2000}, {1, 2000}}},
          Row{{{300000000, 1}, {30000, 40000}, {30000, 1}}}}) {
        EXPECT_EQ(graphics::MGrafikdruck::fit(picture, page), expected) << picture.width << " x " << picture.height;
    }
}

}  // namespace
