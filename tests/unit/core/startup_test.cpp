#include "graphics/MGrafikdruck.h"
#include "runtime/program.h"
#include "startup/arguments/clsArguments.h"
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
