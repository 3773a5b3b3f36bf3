#include <gtest/gtest.h>

#include "report/Completion.h"
#include "report/DoReport.h"
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
    void report(const std::string& content, const std::string& graphic = "", const std::string& printer = "",
                bool wait = false, bool twoPass = false) {
        host.system.files["A.OUT"] = content;
        MPrint::DoReport(session, "A.OUT", graphic, printer, wait, twoPass);
    }
    void debug() { session.log.debugging(true); }
    Lines texts(std::size_t page = 0) {
        Lines result;
        for (const auto& text : host.spooler.device.pages().at(page).texts) {
            result.push_back(text.text);
        }
        return result;
    }
    bool logged(const std::string& line) {
        const Lines lines = host.logLines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

    FakePlatform host;
    session::Session session{host.ports};
};

const Lines linesBeforeThePrinter = {
    ">   DoReport (sDateiname='A.OUT', sGrafikname='', sDruckerTreiber='laser 1', blnWait='Falsch')",
    ">   A.OUT gelesen",
    ">   KRVWINPR.OK ausgegeben",
    ">   verwendeter Druckertreiber: Laser 1",
    ">   Ränder (links;oben; rechts;unten) cm: 0,4233333;0,4233333;0,4233333;0,4233333",
    ">   TwipsPerPixel (X,Y): 1, 1",
    ">   Pixel pro mm (X,Y): 1440, 1440",
    ">   Bedruckbarer Bereich (Breite x Höhe): 11424 x 16358",
    ">   Bedruckbarer Bereich (Breite x Höhe) in cm: 7,933333, 11,35972",
    ">   Physische Größe in cm (X,Y): 20,99733, 29,70036",
    ">   Registry verarbeiten",
    ">     letzten Treiber speichern",
    ">     Versionupgradecheck",
    ">     bestehende Werte lesen Laser 1",
    ">   Registry verarbeitet",
    ">   Grafikdaten aus C:\\KORVANO\\HPLASER.INI verarbeiten",
    ">     Grafik",
    ">     Grafik_A",
    ">   Grafikdaten aus HPLASER.INI verarbeitet",
    ">   Barcodeeinstellungen aus C:\\KORVANO\\HPLASER.INI lesen",
    ">   Barcodehöhe: 0,15",
    ">   Zeilenabstand: 240",
    ">   Kopfabstand: 500",
    ">   Linker Rand: 0",
    ">   ScaleFaktor: 5,5",
    ">   ColorMode (0=Def,1=Mono,2=Color): 1",
    ">   Printer.ColorMode (0=Def,1=Mono,2=Color): 2",
    ">   Printer.ColorMode setzen: 1",
    ">   Printer.ColorMode (0=Def,1=Mono,2=Color): 1",
    ">   Druckerzeichensatz: Courier New",
    ">   Zeichensatz: 255",
    ">   Druckbeginn",
};

TEST_F(ReportTest, TheWholeJobIsLoggedStepByStep) {
    debug();
    session.log.level(2);
    host.spooler.names = {"Fax", "Laser 1"};
    host.spooler.byDefault = "Fax";
    host.settings.put(printerKey, "Zeilenabstand", std::string("240"));
    host.settings.put(printerKey, "ColorMode", std::uint32_t{1});
    host.settings.put(printerKey, "Schacht1", std::string("258"));
    report("^TR1^FEeins^FA\f^TR2zwei", "", "laser 1", false, true);

    Lines expected = linesBeforeThePrinter;
    const Lines pages = {
        ">     Tray wird vom Wert aus der Registrierung gesetzt, es soll 258 gesetzt werden",
        ">     Benutze Tray: 1  Paperbin:258",
        ">     bearbeite Seite: 1",
        ">     DoPage bearbeitet Seite",
        ">       DoPage Phase 1, nur Grafiken ausgeben",
        ">       ^TR",
        ">       ^FE",
        ">       ^FA",
        ">       DoPage Phase 2, nur Text ausgeben",
        ">       ^TR",
        ">       ^FE",
        ">       ^FA",
        ">     DoPage hat Seite bearbeitet",
        ">     Trayregistrierungswert nicht erkannt, Standardtray wird verwendet",
        ">     Schlüssel war: 'HKCU\\Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1'",
        ">     Benutze Tray: 2  Paperbin:258",
        ">     bearbeite Seite: 2",
        ">     DoPage bearbeitet Seite",
        ">       DoPage Phase 1, nur Grafiken ausgeben",
        ">       ^TR",
        ">       DoPage Phase 2, nur Text ausgeben",
        ">       ^TR",
        ">     DoPage hat Seite bearbeitet",
        ">   Druckende",
    };
    expected.insert(expected.end(), pages.begin(), pages.end());
    EXPECT_EQ(host.logLines(), expected);

    const auto& document = *host.spooler.device.documents.back();
    EXPECT_EQ(document.printer, "Laser 1");
    EXPECT_EQ(document.title, "A.OUT");
    EXPECT_TRUE(document.delivered);
    ASSERT_EQ(document.pages.size(), 2U);
    EXPECT_EQ(texts(0), (Lines{"eins", "eins"}));
    EXPECT_EQ(document.pages[1].options.at(PageOption::paperBin), 258);
    EXPECT_EQ(host.system.files.at(okFile), "Alles OK, Korvano kann weitermachen!\r\n");
    EXPECT_EQ(host.settings.commits, 1);
}

TEST_F(ReportTest, AnUnknownPrinterMeansTheDefaultOne) {
    host.spooler.names = {"Fax", "Laser 1"};
    host.spooler.byDefault = "Fax";
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

TEST_F(ReportTest, PagesAreAsManyAsTheHostWrote) {
    report("a\f\fb\f");
    EXPECT_EQ(host.spooler.device.pages().size(), 3U);
    EXPECT_EQ(texts(1), Lines{});
    // Nothing drawn, nothing printed: an empty file, and line ends behind the last form feed.
    for (const char* content : {"", "\r\n", "\x1B"}) {
        report(content);
        EXPECT_TRUE(host.spooler.device.pages().empty());
        EXPECT_TRUE(host.system.files.contains(okFile));
    }
    report("a\f\r\n");
    EXPECT_EQ(host.spooler.device.pages().size(), 1U);
}

TEST_F(ReportTest, AMissingFileIsReportedAndTheHostGetsNoFile) {
    debug();
    host.spooler.running = false;
    MPrint::DoReport(session, "FEHLT.OUT", "", "", false, false);
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
    MPrint::DoReport(session, "FEHLT.OUT", "", "", true, false);
    EXPECT_TRUE(host.system.files.contains(okFile));
    EXPECT_EQ(host.dialogs.shownFiles.size(), 1U);
}

TEST_F(ReportTest, WithoutPrintersTheUserIsTold) {
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
    debug();
    host.spooler.device.fontName = "Andere";
    report("x");
    const std::string notice =
        "Hinweis: Der Zeichensatz 'Courier New' ist auf Ihrem System nicht installiert oder unterstützt keinen "
        "erweiterten Zeichensatz!";
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0],
              (testing_support::RecordingDialogs::Box{notice, platform::Buttons::ok, Icon::critical, "KRVWinPr"}));
    EXPECT_TRUE(logged(">   " + notice));
    EXPECT_TRUE(logged(">   Druckerzeichensatz: Andere"));
    EXPECT_EQ(texts(), Lines{"x"});
}

TEST_F(ReportTest, ADriverThatRefusesThePaperEndsTheJob) {
    debug();
    host.spooler.device.onSetOption = [](PageOption option, int) {
        if (option == PageOption::paperSize) {
            throw runtime::Error(runtime::errInvalidPropertyValue);
        }
    };
    report("x");
    const std::string text = "Fehler beim Ansprechen des Druckertreibers 380 Ungültiger Eigenschaftswert";
    EXPECT_TRUE(logged(">     " + text));
    EXPECT_EQ(host.dialogs.boxes[0].text, text);
    EXPECT_EQ(host.dialogs.boxes[0].title, "KrvWinPr");
    EXPECT_TRUE(host.spooler.device.documents.back()->aborted);
}

TEST_F(ReportTest, AMissingBackgroundEndsTheJobBehindThePagesPrintedSoFar) {
    debug();
    report("a", "kopf.bmp");
    EXPECT_TRUE(host.spooler.device.documents.back()->aborted);
    EXPECT_TRUE(logged(">     Hintergrundbild laden: kopf.bmp"));
    EXPECT_TRUE(logged(">     Hintergrundbild laden Fehler beim Laden der Grafikdatei kopf.bmp auf."));
    EXPECT_EQ(host.dialogs.boxes[0].text,
              "Es trat ein Fehler beim Laden der Grafikdatei kopf.bmp auf.\r\nNummer: 53, Datei nicht gefunden");
    EXPECT_EQ(host.dialogs.boxes[0].title, "KrvWinPr");
}

TEST_F(ReportTest, AJobThatFailsLaterDeliversTheFinishedPages) {
    debug();
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
    EXPECT_TRUE(logged(">     Allgemeiner Fehler in DoReport 380 Ungültiger Eigenschaftswert"));

    host.settings.put(printerKey, "Schacht3", std::string("hinten"));
    report("a\f^TR3c");
    EXPECT_EQ(host.spooler.device.pages().size(), 1U);
    EXPECT_TRUE(logged(">     Allgemeiner Fehler in DoReport 13 Typen unverträglich"));
}

TEST_F(ReportTest, APageThatFailsIsReportedWithThePrintersStatus) {
    debug();
    host.spooler.record.status = platform::printer_status::paperOut;
    host.spooler.device.onBeginPage = [](std::size_t ended) {
        if (ended == 1) {
            throw runtime::Error(runtime::errDiskFull);
        }
    };
    report("a\fb\fc");
    EXPECT_TRUE(logged(">     DoPage Fehler in DoReport 61 Datenträger voll"));
    EXPECT_TRUE(logged(">       Druckerstatus: Paper Out"));
    EXPECT_TRUE(host.spooler.device.documents.back()->aborted);
}

TEST_F(ReportTest, ThePageNumberOverflowsBehindItsSixteenBits) {
    debug();
    report(std::string(40000, '\f'));
    EXPECT_EQ(host.spooler.device.pages().size(), 32767U);
    EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
    EXPECT_TRUE(logged(">     bearbeite Seite: 32767"));
    EXPECT_TRUE(logged(">     Allgemeiner Fehler in DoReport 6 Überlauf"));
}

TEST_F(ReportTest, ALogThatFillsTheDiskStillLetsTheHostGoOn) {
    debug();
    host.spooler.device.onBeginPage = [this](std::size_t) { host.system.unwritable.insert("KRVWinPr.LOG"); };
    report("a\fb", "", "Laser 1", true);
    EXPECT_TRUE(host.system.files.contains(okFile));
    EXPECT_EQ(host.spooler.device.documents.size(), 1U);
}

TEST_F(ReportTest, ACompletionFileThatCannotBeWrittenIsLoggedAndPrintingGoesOn) {
    debug();
    host.system.unwritable.insert(okFile);
    report("x");
    EXPECT_TRUE(logged(">     Fehler in WriteOKFile beim Zugriff auf KRVWINPR.OK 61 Datenträger voll"));
    EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
}

TEST_F(ReportTest, WaitWritesTheFileWhenTheQueueIsEmpty) {
    debug();
    host.spooler.jobCounts = {2, 1, 1, 0};
    report("x", "", "Laser 1", true);
    EXPECT_TRUE(logged(">   KRVWINPR.OK übersprungen wegen /WAIT-Parameter"));
    const Lines lines = host.logLines();
    const Lines tail(lines.end() - 9, lines.end());
    EXPECT_EQ(tail,
              (Lines{">   Druckende", ">   Warte auf leeren Druckerspooler", ">     Überprüfe: Laser 1",
                     ">     Anzahl Jobs: 2", ">     nach DoEvents, Timer: 49507,1",
                     ">     nach DoEvents, Timer: 49507,2", ">     Ende durch Jobs.Count = 0",
                     ">     WaitForSpoolerFinished Ende", ">   KRVWINPR.OK wegen /WAIT-Parameter am Ende ausgegeben"}));
    EXPECT_EQ(host.system.sleptMilliseconds, 200);
}

TEST_F(ReportTest, WaitGivesUpAfterItsTimeOutWithAMessage) {
    host.spooler.jobCounts = {1};
    report("x", "", "Laser 1", true);
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text, "Bitte Drucker Laser 1 überprüfen. TimeOut-Fehler");
    EXPECT_EQ(host.dialogs.boxes[0].icon, Icon::critical);
    EXPECT_EQ(host.system.sleptMilliseconds, 10100);
    EXPECT_TRUE(host.system.files.contains(okFile));
}

TEST_F(ReportTest, WaitOnTheDefaultPrinterHasNoPrinterToWatch) {
    debug();
    host.spooler.jobCounts = {1};
    report("x", "", "", true);
    EXPECT_TRUE(
        logged(">     Allgemeiner Fehler in DoReport 91 Objektvariable oder With-Blockvariable nicht festgelegt"));
    EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
    EXPECT_TRUE(host.system.files.contains(okFile));
}

}  // namespace
