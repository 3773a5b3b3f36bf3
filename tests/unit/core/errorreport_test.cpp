#include "platform/crash/report_text.h"
#include "unit/support/core_test.h"

namespace {

class ErrorReportTest : public testing_support::CoreTest {
protected:
    ErrorReportTest() { host.errorReports.log = "KRVWinPr.ERR"; }

    void report(int second, platform::crash::HostFate fate, const platform::Activity& activity) {
        std::vector<char> room(platform::crash::longestEntry);
        platform::crash::FixedText text(room);
        platform::crash::ErrorFacts error{2026, 11, 22, 5, 6, second, 0, 1, 11, "Zugriff", fate};
        platform::crash::addEntry(text, error, activity, {},
                                  [](std::uintptr_t) noexcept { return platform::crash::Module(); }, {}, {}, {});
        host.system.files["KRVWinPr.ERR"] += text.view();
    }
    std::string shown(const char* control) { return host.forms.form.controls.at(control).text; }
};

TEST_F(ErrorReportTest, TheNewestIsOfferedOnceByModesWithForms) {
    platform::Activity activity;
    activity.mode = "Bericht";
    activity.printFile = "A.OUT";
    activity.stretch = "Seite drucken";
    report(1, platform::crash::HostFate::notWaiting, activity);
    activity.keptAs = "/d/A (1).OUT";
    report(2, platform::crash::HostFate::released, activity);
    host.system.files["KRVWinPr.ERR"] += "===== Fehlerbericht halb";
    host.forms.hasDesktop = false;
    host.errorReports.offers = true;
    start("");
    EXPECT_TRUE(host.errorReports.reports.empty());
    host.forms.hasDesktop = true;
    start("");
    EXPECT_EQ(host.forms.form.design.name, "FFehlerbericht");
    EXPECT_NE(shown("lblFehler").find("„A.OUT“ ist ein Fehler aufgetreten"), std::string::npos);
    EXPECT_NE(shown("lblFehler").find("(11: Zugriff)"), std::string::npos);
    EXPECT_NE(shown("lblAuftrag").find("aufbewahrt als „/d/A (1).OUT“"), std::string::npos);
    EXPECT_NE(shown("lblAuftrag").find("Korvano hat gewartet und kann weiterarbeiten."), std::string::npos);
    EXPECT_TRUE(shown("txtBericht").starts_with("===== Fehlerbericht 20261122-050602000-1 ====="));
    EXPECT_TRUE(shown("txtBericht").ends_with("050602000-1 ====="));
    EXPECT_TRUE(host.system.files.size() == 1 && host.settings.commits == 1);

    host.forms.form = {};
    host.errorReports.offers = false;
    start("/VORSCHAU fehlt.out");
    EXPECT_EQ(host.forms.form.design.name, "FVorschau");
}

TEST_F(ErrorReportTest, ItsButtonsHandTheReportOn) {
    report(1, platform::crash::HostFate::stillWaiting, {});
    host.errorReports.offers = true;
    host.forms.fileToWrite = "b.txt";
    host.system.unwritable.insert("b.txt");
    host.forms.atRun = [this] {
        for (const char* button : {"cmdKopieren", "cmdSpeichern", "cmdOrdner", "cmdSenden", "cmdSchliessen"}) {
            host.forms.form.press(button);
        }
    };
    start("");
    const std::string text = shown("txtBericht");
    EXPECT_EQ(shown("lblAuftrag"),
              "Ein Druckauftrag ist nicht betroffen. Korvano wartet noch: Die Datei KRVWINPR.OK ließ sich nicht "
              "schreiben.");
    EXPECT_EQ(host.forms.copied, text);
    EXPECT_EQ(host.forms.suggested, "C:\\KORVANO\\KRVWinPr-Fehlerbericht.txt");
    EXPECT_NE(lastBox().find("nicht gespeichert"), std::string::npos);
    EXPECT_EQ(host.forms.shownInFolder, "KRVWinPr.ERR");
    EXPECT_EQ(host.forms.mail, "Fehlerbericht von KRVWinPr: " + text);
    EXPECT_TRUE(host.forms.form.closed);

    host.settings.keys.clear();
    host.system.unwritable.clear();
    host.forms.hasHelpers = false;
    start("");
    EXPECT_EQ(host.system.files.at("b.txt"), "\xEF\xBB\xBF" + text + "\r\n");
    EXPECT_EQ(host.dialogs.boxes.size(), 3U);
    EXPECT_NE(lastBox().find("kein E-Mail-Programm"), std::string::npos);
}

}  // namespace
