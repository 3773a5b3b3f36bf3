#include "report/DoReport.h"

#include "unit/support/core_test.h"

namespace {

using platform::PageOption;
using testing_support::Lines;

constexpr const char* okFile = "KRVWINPR.OK";

class ReportTest : public testing_support::CoreTest {
protected:
    ReportTest() {
        session.log.debugging(true);
        host.spooler.device.onSetOption = [this](PageOption, int value) {
            if (value == refusedOption) {
                throw runtime::Error(runtime::errInvalidPropertyValue);
            }
        };
    }
    // Prints, and says what came of it: for which printer, whether the document was dropped, the texts of each page,
    // and whether the host got its file.
    std::string report(const std::string& content, const std::string& graphic = "", const std::string& printer = "",
                       bool wait = false, bool twoPass = false) {
        host.system.files["A.OUT"] = content;
        host.system.files.erase(okFile);
        host.dialogs.boxes.clear();
        host.spooler.device.documents.clear();
        report::MPrint::DoReport(session, {"A.OUT", graphic, printer, wait, twoPass}, [] {});
        std::string outcome;
        for (const auto& document : host.spooler.device.documents) {
            outcome += document->printer + ":" + (document->delivered ? "" : " dropped");
            for (const auto& page : document->pages) {
                outcome += " /";
                for (const auto& text : page.texts) {
                    outcome += " " + text.text;
                }
            }
        }
        return outcome + (host.system.files.contains(okFile) ? " OK" : "");
    }
    const auto& document() { return *host.spooler.device.documents.back(); }
    // What standard error was told last of a setting of the printer.
    std::string told() const {
        const std::string all = host.dialogs.diagnostics.back();
        const std::string line = all.substr(0, all.find(" Die Druckdatei ist aufbewahrt"));
        return line.substr(line.find("Die Einstellung"));
    }
    void set(const char* name, const std::string& value) {
        host.settings.put("Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1", name, value);
    }

    int refusedOption = -1;  // the value that the printer refuses
};

TEST_F(ReportTest, OnlyWhereTheProgramIsDevelopedTheSettingsFileIsRead) {
    host.system.files["KRVWinPr.CFG"] = "<x/>";
    host.xmlFiles.document.error = "Grund";
    EXPECT_EQ(report("A"), "Laser 1: / A OK");
    EXPECT_EQ(host.xmlFiles.parsed, "");
    session.development = true;
    EXPECT_EQ(report("A"), "Laser 1: / A OK");
    EXPECT_EQ(lastBox(), runtime::developmentBuild ? "Noch nicht implementiert!" : "");
    EXPECT_EQ(host.logged("> ValidationError: Grund"), runtime::developmentBuild);
    EXPECT_EQ(host.xmlFiles.parsed, runtime::developmentBuild ? "<x/>" : "");
}

TEST_F(ReportTest, TheNamedPrinterGetsTheJob) {
    host.spooler.names = {"Fax", "Laser 1"};
    host.spooler.byDefault = "Fax";
    set("Schacht1", "258");
    set("Schacht3", "1");
    EXPECT_EQ(report("^TR1^FEeins^FA\f^TR2zwei\f^TR3drei", "", "laser 1", false, true),
              "Laser 1: / eins eins / zwei / drei OK")
        << "struck twice, in one pass of two";
    EXPECT_EQ(document().title, "A.OUT");
    EXPECT_EQ(document().pages[1].options.at(PageOption::paperBin), 258) << "stays until another is set";
    EXPECT_EQ(document().pages[2].options.at(PageOption::paperBin), 1);
    EXPECT_EQ(host.system.files.at(okFile), "Alles OK, Korvano kann weitermachen!\r\n");
    EXPECT_EQ(host.settings.commits, 1);
    EXPECT_EQ(host.spooler.looksFor, Lines()) << "an installed one needs no search";
    // An unknown one is looked for when the host has its file, and otherwise means the default printer.
    host.spooler.discoverable["Flur links"] = "Flur_links";
    host.spooler.onDiscover = [this] { EXPECT_TRUE(host.system.files.contains(okFile)); };
    EXPECT_EQ(report("x", "", "Flur links"), "Flur_links: / x OK");
    EXPECT_EQ(report("x", "keinegrafik", "Tinte"), "Fax: / x OK");
    report("x");
    EXPECT_EQ(host.spooler.looksFor, (Lines{"Flur links", "Tinte"}));
    EXPECT_EQ(lastBox(), "");
}

TEST_F(ReportTest, PaperIsA4UnlessTheSettingsSayOtherwiseAndOneRefusedEndsTheJob) {
    for (const auto& [driver, ignored, size] :
         {std::tuple(256, "1", 256), std::tuple(256, "0", 9), std::tuple(0, "1", 9)}) {
        host.spooler.device.options[PageOption::paperSize] = driver;
        set("IgnorePaperSize", ignored);
        report("x");
        EXPECT_EQ(document().pages[0].options.at(PageOption::paperSize), size);
    }
    refusedOption = platform::paperA4;
    set("IgnorePaperSize", "");  // as if it were missing
    EXPECT_EQ(report("x"), "Laser 1: dropped OK");
    EXPECT_EQ(host.dialogs.boxes[0].title, "KrvWinPr");
    EXPECT_EQ(host.dialogs.boxes[0].text, "Fehler beim Ansprechen des Druckertreibers 380 Ungültiger Eigenschaftswert");
    EXPECT_TRUE(host.logged(">     " + host.dialogs.boxes[0].text));
    EXPECT_TRUE(
        told().ends_with("ist „0“; erwartet: 1, denn der Drucker „Laser 1“ nimmt das Papierformat 9 nicht an."));
}

TEST_F(ReportTest, WithoutAPrintFileTheHostGetsNoFileUnlessItWaits) {
    host.spooler.service = platform::ServiceState::stopped;
    host.system.failures["A.OUT"] = runtime::errFileNotFound;
    EXPECT_EQ(report(""), "");
    EXPECT_TRUE(host.logged(">     Allgemeiner Fehler in DoReport 53 Datei nicht gefunden"));
    EXPECT_TRUE(host.logged(">     DRUCKWARTESCHLANGE ist nicht gestartet!!! "));
    EXPECT_EQ(lastBox(), "Es traten Fehler bei KRVWinPr auf, diese anzeigen?");
    EXPECT_EQ(host.dialogs.diagnostics,
              Lines{"Druckauftrag 'A.OUT' abgebrochen, Fehler 53: Datei nicht gefunden: A.OUT"});
    host.dialogs.answer = platform::Answer::no;
    EXPECT_EQ(report("", "", "", true), " OK");
    EXPECT_EQ(host.dialogs.shownFiles, Lines{"KRVWinPr.log"});

    host.spooler.service = platform::ServiceState::silent;
    for (const int level : {session::DebugLog::ordinary, session::DebugLog::details}) {
        session.log.level(level);
        report("");
        EXPECT_EQ(host.logged(">     Die Auskunft über die Druckwarteschlange antwortet nicht"), level != 0);
    }
    session.log.debugging(false);
    host.spooler.serviceAsked = 0;
    report("", "", "", true);
    EXPECT_EQ(host.spooler.serviceAsked, 0) << "for a log that nobody reads the host does not wait";
}

TEST_F(ReportTest, WithoutPrintersTheUserIsTold) {
    session.log.debugging(false);
    host.spooler.names.clear();
    EXPECT_EQ(report("x"), "");
    EXPECT_EQ(lastBox(),
              "Es sind keine Windowsdruckertreiber auf diesem Rechner installiert. Deshalb kann KRVWinPr nicht "
              "drucken.\r\rDruckauftrag wurde abgebrochen.");
    EXPECT_EQ(host.dialogs.boxes[0].icon, platform::Icon::critical);
    EXPECT_EQ(host.userFiles.files.size(), 0U);
    EXPECT_EQ(report("x", "", "", true), " OK");
    EXPECT_EQ(host.userFiles.files.at("C:\\Daten\\Nicht gedruckt\\A (1).OUT"), "x") << "since the host goes on";
    EXPECT_NE(host.dialogs.notifications.back().find("„A (1).OUT“ im Ordner"), std::string::npos);
}

TEST_F(ReportTest, AFontThatIsNotTheRightOneIsMentionedAndPrintingGoesOn) {
    host.spooler.device.fontName = "Andere";
    EXPECT_EQ(report("x"), "Laser 1: / x OK");
    EXPECT_EQ(lastBox(),
              "Hinweis: Der Zeichensatz 'Courier New' ist auf Ihrem System nicht installiert oder unterstützt keinen "
              "erweiterten Zeichensatz!");
    EXPECT_TRUE(host.logged(">   " + lastBox()) && host.logged(">   Druckerzeichensatz: Andere"));
}

TEST_F(ReportTest, TheBackgroundIsOnePictureBehindEveryPageOrEndsTheJob) {
    host.spooler.device.capabilities = testing_support::oblongPixels;
    host.addPicture("kopf.bmp", 10, 10);
    EXPECT_EQ(report("a\fb\f\fc", "kopf.bmp", "", false, true), "Laser 1: / a / b / / c OK");
    for (const auto& page : document().pages) {
        ASSERT_EQ(page.pictures.size(), 1U);
        const auto& drawn = page.pictures[0];
        EXPECT_EQ(drawn.picture, document().pages[0].pictures[0].picture);
        EXPECT_EQ(std::tuple(drawn.x, drawn.y, drawn.width, drawn.height), std::tuple(0, 0, 2380, 6816));
    }
    host.system.files["text.bmp"] = "kein Bild";
    using Row = std::pair<std::string, std::string>;
    for (const auto& [name, cause] :
         {Row{"fehlt.bmp", "53, Datei nicht gefunden"}, Row{"text.bmp", "481, Ungültiges Bild"}}) {
        EXPECT_EQ(report("a", name), "Laser 1: dropped OK");
        const std::string text = "Fehler beim Laden der Grafikdatei " + name + " auf.";
        EXPECT_TRUE(host.logged(">     Hintergrundbild laden " + text));
        EXPECT_EQ(host.dialogs.boxes[0].text, "Es trat ein " + text + "\r\nNummer: " + cause);
    }
}

TEST_F(ReportTest, TheHostsSettingsFileFillsBothSetsAndTheBarcodes) {
    host.addPicture("logo.bmp", 96, 96);
    host.addPicture("C:\\KORVANO\\LASER\\KRVWin.M12", 96, 96);
    host.system.files["C:\\KORVANO\\hplaser.ini"] = "";
    auto& values = host.system.profile.values = {{{"Grafik", "Grafik1"}, "1,2,logo.bmp"},
                                                 {{"Grafik_A", "Grafik3"}, "3,4,2,INCH,True,2540"},
                                                 {{"Modus", "AutoScaleDPI"}, "true"},
                                                 {{"Font", "BarcodeHeight"}, "0.5"}};
    set("ScaleFaktor", "2,54");
    host.system.screenDpi = 192;
    report("^GR1^GA1^BC1,1,A\\");
    const auto& page = document().pages[0];
    ASSERT_EQ(page.pictures.size(), 2U);
    // 1270 hundredths of a millimetre at that screen, divided by half the factor.
    EXPECT_EQ(std::tuple(page.pictures[0].x, page.pictures[0].y, page.pictures[0].width),
              std::tuple(2880, 1440 + 500, 1000));
    EXPECT_EQ(std::tuple(page.pictures[1].x, page.pictures[1].width), std::tuple(4 * 1440, 1));
    EXPECT_EQ(page.rectangles.at(0).height, 720);

    values[{"Grafik", "Grafik1"}] = "1,2,nichts.bmp";
    EXPECT_EQ(report("^GRx"), "Laser 1: dropped OK") << "the host does not wait for pictures";
    EXPECT_TRUE(host.logged(">     Allgemeiner Fehler in DoReport -2147194503 Bilddatei nichts.bmp nicht gefunden."));
    session.log.debugging(false);
    EXPECT_EQ(report("^GRx"), "Laser 1: / x OK");
}

TEST_F(ReportTest, AJobThatFailsLaterDeliversTheFinishedPages) {
    set("Schacht3", "99");
    refusedOption = 99;
    EXPECT_EQ(report("a\fb\f^TR3c"), "Laser 1: / a / b OK");
    EXPECT_TRUE(host.logged(">     Allgemeiner Fehler in DoReport 380 Ungültiger Eigenschaftswert"));
    const std::string place = "“ unter HKCU\\Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1 (settings) ist „";
    EXPECT_EQ(told(), "Die Einstellung „Schacht3" + place +
                          "99“; erwartet: -1, denn der Drucker „Laser 1“ nennt keine Schächte.");
    host.spooler.bins = {{1, "Oben"}, {258, ""}};
    report("^TR3c");
    EXPECT_EQ(told(), "Die Einstellung „Schacht3" + place +
                          "99“; erwartet: -1 oder ein Schacht des Druckers „Laser 1“: 1 (Oben), 258.");
    set("Schacht3", "hinten");
    EXPECT_EQ(report("a\f^TR3c"), "Laser 1: / a OK");
    EXPECT_TRUE(host.logged(">     Allgemeiner Fehler in DoReport 13 Typen unverträglich"));
    EXPECT_EQ(told(),
              "Die Einstellung „Schacht3" + place + "hinten“; erwartet: die Nummer eines Schachts oder -1 für keinen.");
    set("Schacht3", "");
    EXPECT_EQ(report("a\f^TR3c"), "Laser 1: / a / c OK");
    set("ColorMode", "99");
    EXPECT_EQ(report("a"), "Laser 1: dropped OK");
    EXPECT_EQ(told(), "Die Einstellung „ColorMode" + place +
                          "99“; erwartet: 0 (wie der Treiber), 1 (schwarzweiß) oder 2 (farbig).");
    set("ColorMode", "0");
    for (const char* number : {"1e99", "9999999"}) {
        EXPECT_EQ(report("a\f\n^BC" + std::string(number) + ",1,A\\"), "Laser 1: / a OK");
        EXPECT_NE(host.dialogs.diagnostics.back().find("Überlauf: (Makro ^BC auf Seite 2, Zeile 2)"),
                  std::string::npos);
    }
    EXPECT_EQ(report("a\f^BC1,1,l\\\fc"), "Laser 1: / a OK");
    EXPECT_TRUE(host.dialogs.diagnostics.back().starts_with(
        "Druckauftrag 'A.OUT' nur bis Seite 1 gedruckt, Fehler 5970: Invalid character in the Barcode. Zeichen 'l' an "
        "Stelle 1"));
    // A page that fails is reported with the printer's status.
    host.spooler.record.status = platform::printer_status::paperOut;
    host.spooler.device.onBeginPage = [](std::size_t ended) {
        if (ended == 1) {
            throw runtime::Error(runtime::errDiskFull);
        }
    };
    EXPECT_EQ(report("a\fb\fc"), "Laser 1: dropped / a OK");
    EXPECT_TRUE(host.logged(">     DoPage Fehler in DoReport 61 Datenträger voll"));
    EXPECT_TRUE(host.logged(">       Druckerstatus: Paper Out"));
}

TEST_F(ReportTest, WhatIsMissingInPrintIsToldOnceForAJob) {
    session.log.debugging(false);
    host.system.files["C:\\KORVANO\\hplaser.ini"] = "";
    auto& values = host.system.profile.values = {{{"Grafik", "Grafik1"}, "1,2,nichts.bmp"},
                                                 {{"Grafik_A", "Grafik1"}, "1,2,nichts.bmp"},
                                                 {{"Font", "BarcodeHeight"}, "-0,0001"}};
    host.system.profile.unreadable = "hplaser.ini (keine Berechtigung)";
    EXPECT_EQ(report("^GR^GA^BC1,1,A\\^BC1,1,A\\x\f^BC1,1,A\\"), "Laser 1: / x / OK");
    EXPECT_EQ(
        host.dialogs.diagnostics,
        (Lines{"HPLASER.INI ist nicht lesbar: hplaser.ini (keine Berechtigung). Gedruckt wird ohne die Grafiken und "
               "Einstellungen darin.",
               "Bilddatei nichts.bmp nicht gefunden; gedruckt wird ohne diese Grafik.",
               "Barcodes werden nicht gedruckt: Sie sind -0,0001 Zoll hoch. Bitte den Wert ändern (BarcodeHeight in "
               "[Font] von hplaser.ini)."}));
    EXPECT_EQ(host.dialogs.notifications, Lines{host.dialogs.diagnostics[0]});
    for (const char* height : {"1e999", "1e300"}) {
        values[{"Font", "BarcodeHeight"}] = height;
        report("^BC1,1,A\\");
        EXPECT_NE(host.dialogs.diagnostics.back().find("Überlauf: (BarcodeHeight in [Font] von hplaser.ini)"),
                  std::string::npos);
    }
}

TEST_F(ReportTest, AJobWaitsForThePrinterThenIsKeptWithTheWayToPrintIt) {
    const std::string kept = "C:\\Daten\\Nicht gedruckt\\A (1).OUT";
    host.spooler.device.onBeginPage = [&](std::size_t) {
        EXPECT_EQ(host.userFiles.files.at(kept), "x") << "from the moment when the host goes on";
    };
    host.spooler.silentFor = 5;
    EXPECT_EQ(report("x", "keinegrafik", "laser 1"), "Laser 1: / x OK") << "goes out when the spooler answers";
    EXPECT_EQ(host.userFiles.files.size() + host.dialogs.diagnostics.size(), 0U);

    for (const auto& [wait, named, seconds] : {std::tuple(true, "laser 1", 10), std::tuple(false, "", 60)}) {
        host.spooler.silentFor = 1000;
        host.system.sleptMilliseconds = 0;
        host.userFiles.files = {{kept, "alt"}};
        EXPECT_EQ(report("x", "LOGO.BMP", named, wait, true), " OK");
        EXPECT_EQ(host.system.sleptMilliseconds, seconds * 1000);
        const std::string place = "C:\\Daten\\Nicht gedruckt\\A (2).OUT";
        EXPECT_EQ(host.userFiles.files.at(place) + host.userFiles.files.at(kept), "xalt");
        const std::string& text = host.userFiles.files.at(place + ".txt");
        EXPECT_NE(text.find("\r\nin C:\\KORVANO|" + place + "|LOGO.BMP|" + named + "|/TWOPASS\r\n"), std::string::npos)
            << text;
        EXPECT_NE(text.find("Grund:              Fehler 482: Druckerfehler: "), std::string::npos) << text;
        EXPECT_TRUE(host.dialogs.notifications.back().starts_with(
            "Druckauftrag 'A.OUT' nicht gedruckt. Die Druckdatei ist aufbewahrt als „A (2).OUT“"));
        EXPECT_NE(host.dialogs.diagnostics.back().find("„A (2).OUT“ im Ordner „C:\\Daten\\Nicht gedruckt“"),
                  std::string::npos);
    }
    EXPECT_NE(host.dialogs.diagnostics.front().find("Drucker „laser 1“: antwortet nicht"), std::string::npos);
}

TEST_F(ReportTest, WhatTheUserIsToldIsWhatBecameOfTheJob) {
    const auto told = [this](const char* what) {
        return host.dialogs.diagnostics.back().starts_with(std::string("Druckauftrag 'A.OUT' ") + what + " Fehler ");
    };
    host.spooler.device.onEnd = [] { throw platform::SpoolerError(1280, "lehnt ab"); };
    EXPECT_EQ(report("x"), "Laser 1: dropped / x OK");
    EXPECT_TRUE(told("nicht gedruckt,"));
    EXPECT_NE(host.userFiles.files.begin()->second.find("x"), std::string::npos);
    host.userFiles.unwritable = {"C:\\Daten\\Nicht gedruckt\\"};
    host.spooler.device.answerLost = true;
    report("y");
    EXPECT_TRUE(told("vielleicht gedruckt,"));
    const std::string& text = host.userFiles.files.at("C:\\KORVANO\\Nicht gedruckt\\A (1).OUT.txt");
    EXPECT_NE(text.find("vielleicht gedruckt"), std::string::npos);
    EXPECT_NE(text.find("Fertige Seiten:     C:\\KORVANO\\Nicht gedruckt\\A (1).OUT.pdf"), std::string::npos);
    host.userFiles.unwritable.insert("C:\\KORVANO\\Nicht gedruckt\\");
    report("z");
    EXPECT_NE(host.dialogs.diagnostics.back().find("nicht aufbewahrt werden"), std::string::npos);

    const std::size_t notified = host.dialogs.notifications.size();
    host.spooler.device.onEnd = nullptr;
    host.userFiles = {};
    EXPECT_EQ(report("x", "", "", true), "Laser 1: / x OK");
    EXPECT_TRUE(told("gedruckt, aber"));
    EXPECT_EQ(host.userFiles.files.size() + host.dialogs.notifications.size(), notified);
}

TEST_F(ReportTest, ACancelledJobEndsWithoutAWordToTheUserAndIsNotKept) {
    const auto cancel = [] { throw platform::SpoolerError(63, "abgebrochen", platform::Recovery::cancelled); };
    host.spooler.device.onEnd = cancel;
    EXPECT_EQ(report("a\fb", "", "Laser 1", true), "Laser 1: dropped / a / b OK");
    host.spooler.device.onEnd = nullptr;
    host.spooler.device.onBeginPage = [&](std::size_t page) { page == 1 ? cancel() : void(); };
    EXPECT_EQ(report("a\fb"), "Laser 1: dropped / a OK");
    EXPECT_EQ(host.dialogs.boxes.size() + host.dialogs.notifications.size() + host.userFiles.files.size(), 0U);
    EXPECT_EQ(host.dialogs.diagnostics.back(), "Druckauftrag 'A.OUT' vom Benutzer abgebrochen.");
    EXPECT_TRUE(host.logged(">     Druckauftrag vom Benutzer abgebrochen"));
    EXPECT_FALSE(host.logged(">       Druckerstatus: ")) << "the page is no failure";
}

TEST_F(ReportTest, ATrayThatTheDriverDoesNotChangeToWithinTheJobIsLogged) {
    set("Schacht1", "3");
    host.spooler.device.options[PageOption::paperBin] = 2;
    host.spooler.device.keepsOptions = true;
    EXPECT_EQ(report("^TR1x"), "Laser 1: / x OK");
    EXPECT_TRUE(host.logged(">     Druckertreiber wechselt den Schacht nicht innerhalb des Auftrags, es bleibt bei 2"));
}

TEST_F(ReportTest, FilesThatCannotBeWrittenStillLetThePrinterOrTheHostGoOn) {
    host.system.unwritable.insert(okFile);
    EXPECT_EQ(report("x"), "Laser 1: / x");
    EXPECT_TRUE(host.logged(">     Fehler in WriteOKFile beim Zugriff auf KRVWINPR.OK 61 Datenträger voll"));
    EXPECT_EQ(host.dialogs.diagnostics.size(), 1U);
    EXPECT_EQ(host.system.toldStarter, 0) << "there is no file";
    host.system.unwritable.clear();
    report("x");
    EXPECT_EQ(host.system.toldStarter, 1);
    host.spooler.device.onBeginPage = [this](std::size_t) { host.system.unwritable.insert("KRVWinPr.LOG"); };
    EXPECT_EQ(report("a\fb", "", "Laser 1", true), "Laser 1: dropped OK");
}

TEST_F(ReportTest, WaitWritesTheFileWhenTheQueueIsEmptyOrTheTimeIsOver) {
    host.spooler.jobCounts = {2, 1, 1, 0};
    EXPECT_EQ(report("x", "", "Laser 1", true), "Laser 1: / x OK");
    EXPECT_TRUE(host.logged(">     nach DoEvents, Timer: 49507,2"));
    EXPECT_EQ(host.system.sleptMilliseconds, 200);
    EXPECT_EQ(lastBox(), "");
    host.spooler.jobCounts = {1};
    EXPECT_EQ(report("x", "", "Laser 1", true), "Laser 1: / x OK");
    EXPECT_EQ(lastBox(), "Bitte Drucker Laser 1 überprüfen. TimeOut-Fehler");
    EXPECT_NEAR(host.system.sleptMilliseconds, 200 + 10'000, 200);
    // The default printer is none to watch.
    EXPECT_EQ(report("x", "", "", true), "Laser 1: / x OK");
    EXPECT_TRUE(
        host.logged(">     Allgemeiner Fehler in DoReport 91 Objektvariable oder With-Blockvariable nicht festgelegt"));
}

}  // namespace
