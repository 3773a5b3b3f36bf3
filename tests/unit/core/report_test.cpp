#include <gtest/gtest.h>

#include "report/DoReport.h"
#include "report/completion.h"
#include "unit/support/fake_platform.h"

namespace {

using platform::Icon;
using platform::PageOption;
using testing_support::FakePlatform;
using Lines = std::vector<std::string>;

constexpr const char* okFile = "KRVWINPR.OK";
constexpr const char* printerKey = "Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1";

class ReportTest : public ::testing::Test {
protected:
    ReportTest() { session.log.debugging(true); }
    void report(const std::string& content, const std::string& graphic = "", const std::string& printer = "",
                bool wait = false, bool twoPass = false) {
        host.system.files["A.OUT"] = content;
        report::MPrint::DoReport(session, {"A.OUT", graphic, printer, wait, twoPass}, [] {});
    }
    Lines texts(std::size_t page = 0) {
        Lines result;
        for (const auto& text : host.spooler.device.pages().at(page).texts) {
            result.push_back(text.text);
        }
        return result;
    }

    FakePlatform host;
    session::Session session{host.ports};
};

TEST_F(ReportTest, TheNamedPrinterGetsTheJob) {
    host.spooler.names = {"Fax", "Laser 1"};
    host.spooler.byDefault = "Fax";
    host.settings.put(printerKey, "Schacht1", std::string("258"));
    report("^TR1^FEeins^FA\f^TR2zwei", "", "laser 1", false, true);
    const auto& document = *host.spooler.device.documents.back();
    EXPECT_EQ(document.printer, "Laser 1");
    EXPECT_EQ(document.title, "A.OUT");
    EXPECT_TRUE(document.delivered);
    EXPECT_EQ(texts(0), (Lines{"eins", "eins"})) << "struck twice, in one pass of two";
    EXPECT_EQ(texts(1), Lines{"zwei"});
    EXPECT_EQ(document.pages[1].options.at(PageOption::paperBin), 258) << "stays until another is set";
    EXPECT_EQ(host.system.files.at(okFile), "Alles OK, Korvano kann weitermachen!\r\n");
    EXPECT_EQ(host.settings.commits, 1);

    // An unknown one means the default printer.
    report("x", "keinegrafik", "Tinte");
    EXPECT_EQ(host.spooler.device.documents.back()->printer, "Fax");
    EXPECT_TRUE(host.dialogs.boxes.empty());
}

TEST_F(ReportTest, PaperIsA4UnlessTheSettingsSayOtherwise) {
    host.spooler.device.options[PageOption::paperSize] = 256;
    host.settings.put(printerKey, "IgnorePaperSize", std::string("1"));
    report("x");
    EXPECT_EQ(host.spooler.device.pages()[0].options.at(PageOption::paperSize), 256);
    host.settings.put(printerKey, "IgnorePaperSize", std::string("0"));
    report("x");
    EXPECT_EQ(host.spooler.device.pages()[0].options.at(PageOption::paperSize), 9);
}

TEST_F(ReportTest, AMissingFileIsReportedAndTheHostGetsNoFile) {
    host.spooler.running = false;
    report::MPrint::DoReport(session, {"FEHLT.OUT", "", "", false, false}, [] {});
    EXPECT_EQ(host.logLines(),
              (Lines{">   DoReport (sDateiname='FEHLT.OUT', sGrafikname='', sDruckerTreiber='', blnWait='Falsch')",
                     ">     Allgemeiner Fehler in DoReport 53 Datei nicht gefunden",
                     ">     DRUCKWARTESCHLANGE ist nicht gestartet!!! "}));
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text, "Es traten Fehler bei KRVWinPr auf, diese anzeigen?");
    EXPECT_EQ(host.dialogs.shownFiles, Lines{"KRVWinPr.log"});
    EXPECT_FALSE(host.system.files.contains(okFile));
    EXPECT_EQ(host.dialogs.diagnostics,
              Lines{"Druckauftrag 'FEHLT.OUT' abgebrochen, Fehler 53: Datei nicht gefunden: FEHLT.OUT"});
    host.dialogs.answer = platform::Answer::no;
    report::MPrint::DoReport(session, {"FEHLT.OUT", "", "", true, false}, [] {});
    EXPECT_TRUE(host.system.files.contains(okFile));
    EXPECT_EQ(host.dialogs.shownFiles.size(), 1U);
}

TEST_F(ReportTest, WithoutPrintersTheUserIsTold) {
    session.log.debugging(false);
    host.spooler.names.clear();
    report("x");
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text,
              "Es sind keine Windowsdruckertreiber auf diesem Rechner installiert. Deshalb kann KRVWinPr nicht "
              "drucken.\r\rDruckauftrag wurde abgebrochen.");
    EXPECT_EQ(host.dialogs.boxes[0].icon, Icon::critical);
    EXPECT_FALSE(host.system.files.contains(okFile));
    report("x", "", "", true);
    EXPECT_TRUE(host.system.files.contains(okFile));
}

TEST_F(ReportTest, AFontThatIsNotTheRightOneIsMentionedAndPrintingGoesOn) {
    host.spooler.device.fontName = "Andere";
    report("x");
    const std::string notice =
        "Hinweis: Der Zeichensatz 'Courier New' ist auf Ihrem System nicht installiert oder unterstützt keinen "
        "erweiterten Zeichensatz!";
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0],
              (testing_support::RecordingDialogs::Box{notice, platform::Buttons::ok, Icon::critical, "KRVWinPr"}));
    EXPECT_TRUE(host.logged(">   " + notice));
    EXPECT_TRUE(host.logged(">   Druckerzeichensatz: Andere"));
    EXPECT_EQ(texts(), Lines{"x"});
}

TEST_F(ReportTest, ADriverThatRefusesThePaperEndsTheJob) {
    host.spooler.device.onSetOption = [](PageOption option, int) {
        if (option == PageOption::paperSize) {
            throw runtime::Error(runtime::errInvalidPropertyValue);
        }
    };
    report("x");
    const std::string text = "Fehler beim Ansprechen des Druckertreibers 380 Ungültiger Eigenschaftswert";
    EXPECT_TRUE(host.logged(">     " + text));
    EXPECT_EQ(host.dialogs.boxes[0].text, text);
    EXPECT_EQ(host.dialogs.boxes[0].title, "KrvWinPr");
    EXPECT_TRUE(host.spooler.device.documents.back()->aborted);
}

TEST_F(ReportTest, TheBackgroundIsOnePictureBehindEveryPage) {
    host.addPicture("kopf.bmp", 10, 10);
    report("a\fb\f\fc", "kopf.bmp", "", false, true);
    const auto& pages = host.spooler.device.pages();
    ASSERT_EQ(pages.size(), 4U);
    for (const auto& page : pages) {
        ASSERT_EQ(page.pictures.size(), 1U);
        const auto& drawn = page.pictures[0];
        EXPECT_EQ(drawn.picture, pages[0].pictures[0].picture);
        EXPECT_EQ((std::vector<int>{drawn.x, drawn.y, drawn.width, drawn.height}),
                  (std::vector<int>{0, 0, 11424, 16358}));
    }
    EXPECT_EQ(std::ranges::count(host.logLines(), ">     Hintergrundbild laden: kopf.bmp"), 4);

    host.system.files["kopf.bmp"] = "kein Bild";
    report("a", "kopf.bmp");
    EXPECT_TRUE(host.spooler.device.documents.back()->aborted);
    EXPECT_EQ(host.dialogs.boxes[0].text,
              "Es trat ein Fehler beim Laden der Grafikdatei kopf.bmp auf.\r\nNummer: 481, Ungültiges Bild");
}

TEST_F(ReportTest, TheHostsSettingsFileFillsBothSetsAndTheBarcodes) {
    host.addPicture("logo.bmp", 96, 96);
    host.addPicture("C:\\KORVANO\\LASER\\KRVWin.M12", 96, 96);
    host.system.files["C:\\KORVANO\\hplaser.ini"] = "";
    auto& values = host.system.profile.values;
    values[{"Grafik", "Grafik1"}] = "1,2,logo.bmp";
    values[{"Grafik_A", "Grafik3"}] = "3,4,2,INCH,True,2540";
    values[{"Modus", "AutoScaleDPI"}] = "true";
    values[{"Font", "BarcodeHeight"}] = "0.5";
    host.settings.put(printerKey, "ScaleFaktor", std::string("2,54"));
    host.system.screenDpi = 192;
    report("^GR^GA1^BC1,1,A\\");
    const auto& page = host.spooler.device.pages()[0];
    ASSERT_EQ(page.pictures.size(), 2U);
    // 1270 hundredths of a millimetre at that screen, divided by half the factor.
    EXPECT_EQ(page.pictures[0].x, 2880);
    EXPECT_EQ(page.pictures[0].y, 1440 + 500);
    EXPECT_EQ(page.pictures[0].width, 1000);
    EXPECT_EQ(page.pictures[1].x, 4 * 1440);
    EXPECT_EQ(page.pictures[1].width, 1);
    EXPECT_EQ(page.rectangles.at(0).height, 720);

    values[{"Grafik", "Grafik1"}] = "1,2,nichts.bmp";
    report("^GRx");
    EXPECT_TRUE(host.logged(">     Allgemeiner Fehler in DoReport -2147194503 Bilddatei nichts.bmp nicht gefunden."));
    EXPECT_TRUE(host.system.files.contains(okFile)) << "the host does not wait for pictures";
    session.log.debugging(false);
    report("^GRx");
    EXPECT_EQ(texts(), Lines{"x"});
}

TEST_F(ReportTest, AMissingBackgroundEndsTheJobBehindThePagesPrintedSoFar) {
    report("a", "kopf.bmp");
    EXPECT_TRUE(host.spooler.device.documents.back()->aborted);
    EXPECT_TRUE(host.logged(">     Hintergrundbild laden: kopf.bmp"));
    EXPECT_TRUE(host.logged(">     Hintergrundbild laden Fehler beim Laden der Grafikdatei kopf.bmp auf."));
    EXPECT_EQ(host.dialogs.boxes[0].text,
              "Es trat ein Fehler beim Laden der Grafikdatei kopf.bmp auf.\r\nNummer: 53, Datei nicht gefunden");
    EXPECT_EQ(host.dialogs.boxes[0].title, "KrvWinPr");
}

TEST_F(ReportTest, AJobThatFailsLaterDeliversTheFinishedPages) {
    // Page three asks for a bin that the printer refuses.
    host.settings.put(printerKey, "Schacht3", std::string("99"));
    host.spooler.device.onSetOption = [](PageOption option, int value) {
        if (option == PageOption::paperBin && value == 99) {
            throw runtime::Error(runtime::errInvalidPropertyValue);
        }
    };
    report("a\fb\f^TR3c");
    EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
    EXPECT_EQ(host.spooler.device.pages().size(), 2U);
    EXPECT_TRUE(host.logged(">     Allgemeiner Fehler in DoReport 380 Ungültiger Eigenschaftswert"));

    host.settings.put(printerKey, "Schacht3", std::string("hinten"));
    report("a\f^TR3c");
    EXPECT_EQ(host.spooler.device.pages().size(), 1U);
    EXPECT_TRUE(host.logged(">     Allgemeiner Fehler in DoReport 13 Typen unverträglich"));
}

TEST_F(ReportTest, APageThatFailsIsReportedWithThePrintersStatus) {
    host.spooler.record.status = platform::printer_status::paperOut;
    host.spooler.device.onBeginPage = [](std::size_t ended) {
        if (ended == 1) {
            throw runtime::Error(runtime::errDiskFull);
        }
    };
    report("a\fb\fc");
    EXPECT_TRUE(host.logged(">     DoPage Fehler in DoReport 61 Datenträger voll"));
    EXPECT_TRUE(host.logged(">       Druckerstatus: Paper Out"));
    EXPECT_TRUE(host.spooler.device.documents.back()->aborted);
}

TEST_F(ReportTest, ALogThatFillsTheDiskStillLetsTheHostGoOn) {
    host.spooler.device.onBeginPage = [this](std::size_t) { host.system.unwritable.insert("KRVWinPr.LOG"); };
    report("a\fb", "", "Laser 1", true);
    EXPECT_TRUE(host.system.files.contains(okFile));
    EXPECT_EQ(host.spooler.device.documents.size(), 1U);
}

TEST_F(ReportTest, ACompletionFileThatCannotBeWrittenIsLoggedAndPrintingGoesOn) {
    host.system.unwritable.insert(okFile);
    report("x");
    EXPECT_TRUE(host.logged(">     Fehler in WriteOKFile beim Zugriff auf KRVWINPR.OK 61 Datenträger voll"));
    EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
}

TEST_F(ReportTest, WaitWritesTheFileWhenTheQueueIsEmpty) {
    host.spooler.jobCounts = {2, 1, 1, 0};
    report("x", "", "Laser 1", true);
    EXPECT_TRUE(host.logged(">   KRVWINPR.OK übersprungen wegen /WAIT-Parameter"));
    const Lines lines = host.logLines();
    const Lines tail(lines.end() - 9, lines.end());
    EXPECT_EQ(tail,
              (Lines{">   Druckende", ">   Warte auf leeren Druckerspooler", ">     Überprüfe: Laser 1",
                     ">     Anzahl Jobs: 2", ">     nach DoEvents, Timer: 49507,1",
                     ">     nach DoEvents, Timer: 49507,2", ">     Ende durch Jobs.Count = 0",
                     ">     WaitForSpoolerFinished Ende", ">   KRVWINPR.OK wegen /WAIT-Parameter am Ende ausgegeben"}));
    EXPECT_EQ(host.system.sleptMilliseconds, 200);
}

TEST_F(ReportTest, WaitOnTheDefaultPrinterHasNoPrinterToWatch) {
    host.spooler.jobCounts = {1};
    report("x", "", "", true);
    EXPECT_TRUE(
        host.logged(">     Allgemeiner Fehler in DoReport 91 Objektvariable oder With-Blockvariable nicht festgelegt"));
    EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
    EXPECT_TRUE(host.system.files.contains(okFile));
}

}  // namespace
