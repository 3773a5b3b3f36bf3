// The printer selection on a form in memory, from its start to its end as a user has it.
#include "settings/FDruckerAuswahl.h"
#include "unit/support/core_test.h"

namespace {

using testing_support::FormState;
using testing_support::Lines;

constexpr const char* productKey = "Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\";

class DruckerAuswahl : public testing_support::CoreTest {
protected:
    DruckerAuswahl() {
        host.spooler.names = {"Laser 1", R"(\\srv\Büro & Lager)"};
        host.spooler.bins = {{7, "Automatik"}, {1, "Kassette 1"}, {-32000, "Umschlag"}};
        host.spooler.record.driverName = "Treiber";
        host.spooler.record.portName = "LPT1:";
    }

    // Opens the form; the steps are what the user does before it is closed.
    void open(
        const std::function<void()>& user = [] {}, const std::string& switches = "") {
        host.forms.atRun = user;
        start("/DRUCKERAUSWAHL" + switches);
    }
    std::string stored(const std::string& name, const std::string& printer = "Laser 1") {
        const auto value = host.settings.value(platform::SettingsRoot::currentUser, productKey + printer, name);
        return value ? std::get<std::string>(*value) : "(fehlt)";
    }
    void put(const std::string& name, const std::string& value) {
        host.settings.put(productKey + std::string("Laser 1"), name, value);
    }
    std::string shown(const std::string& control) const { return form.controls.at(control).text; }
    int selected(const std::string& control) const { return form.controls.at(control).selected; }
    Lines selectionFile() {
        const auto found = host.system.files.find("C:\\KORVANO\\KRVWIN.ASW");
        return found == host.system.files.end() ? Lines() : Lines{found->second};
    }

    FormState& form = host.forms.form;
};

TEST_F(DruckerAuswahl, TheLogHasEveryStepInItsOrder) {
    host.spooler.names = {"Laser 1"};
    host.spooler.bins = {{7, "Automatik"}};
    open([] {}, " /DEBUG");
    const Lines log = host.logLines();
    const auto begin = std::ranges::find(log, "> Druckertreiberauswahlbeginn");
    ASSERT_NE(begin, log.end());
    const Lines counted = {">   vorhandene Schächte bei Treiber 'Laser 1' ermitteln",
                           ">   vorhandene Schächte bei Treiber 'Laser 1' ermittelt: 1"};
    std::string padding;
    for (int i = 0; i < 15; ++i) {
        padding += "\\x00";
    }
    const Lines filled = {">   ermitteln der Schachtnamen bei Treiber 'Laser 1'",
                          ">     Schächte: 1",
                          ">     Platz für Schachtnamen reserviert",
                          ">     Schachtnamen von API anfordern",
                          ">     Schachtnamen von API ermittelt",
                          ">     Schachtnamen zusammensetzen, NamesList: 'Automatik" + padding + "'",
                          ">     Schachtnamen auf eigentliche Länge begrenzen",
                          ">     Schachtnamen: 'Automatik' Nr: 7",
                          ">     Schachtnamen für Combobox gesetzt",
                          ">   Schachtnamen bei Treiber 'Laser 1' ermittelt"};
    Lines expected = {"> Druckertreiberauswahlbeginn",
                      "> Windowsdruckertreiber Auswahlformbeginn",
                      ">   Vorgabeauswahl setzen",
                      ">   vorhandene Druckertreiber Liste hinzufügen",
                      ">     'Laser 1'  'Treiber'  'LPT1:'",
                      ">   Liste zugewiesene Druckertreiber: 1",
                      ">   Vorgabeauswahl in Liste aktivieren ''",
                      ">   kein Vorgabedrucker gefunden",
                      ">   Index setzen 0 von 1"};
    const auto add = [&expected](const Lines& lines) { expected.insert(expected.end(), lines.begin(), lines.end()); };
    const auto fillAll = [&] {
        for (int tray = 0; tray < 3; ++tray) {
            add(filled);
        }
    };
    add(counted);
    fillAll();
    add(counted);
    add({">   Schachtzuordnungen aus Registrierung lesen", ">   Index auf ersten Eintrag gesetzt"});
    add(counted);
    add({">   vorhandene Schächte ermitteln"});
    fillAll();
    add({">   Schachtauswahl aus Registrierung lesen", ">   Schächte gesetzt",
         "> Windowsdruckertreiber Auswahlformende", "> Druckertreiberauswahlende", "> Programm regulär beendet!", ""});
    EXPECT_EQ(Lines(begin, log.end()), expected);
}

TEST_F(DruckerAuswahl, ThePrinterChosenLastIsSelectedByItsExactName) {
    using Row = std::tuple<const char*, int>;
    for (const auto& [remembered, index] :
         {Row{"\\\\srv\\Büro & Lager\r\n", 1}, Row{"laser 1\r\n", 0}, Row{"GEFUNDEN", -1}, Row{"   ", 0}}) {
        host.system.files["C:\\KORVANO\\KRVWIN.ASW"] = remembered;
        open();
        EXPECT_EQ(selected("List1"), index) << remembered;
    }
}

TEST_F(DruckerAuswahl, ShowsWhatIsStoredAndLosesNothingByIt) {
    for (const auto& [name, value] : {std::pair{"LinkerRand", "-20"},
                                      {"ObererRand", "x"},
                                      {"Schacht1", "1"},
                                      {"Schacht2", "-32000"},
                                      {"Schacht3", "99"}}) {
        put(name, value);
    }
    const auto before = host.settings.keys;
    const auto check = [this] {
        EXPECT_EQ(shown("txtLinkerRand") + shown("txtObererRand") + shown("txtZeilenabstand") + shown("txtScaleFaktor"),
                  "-20x2225,5");
        EXPECT_EQ(form.controls["cboSchacht1"].items, (Lines{"Automatik", "Kassette 1", "Umschlag"}));
        EXPECT_EQ(std::tuple(selected("cboSchacht1"), selected("cboSchacht2"), selected("cboSchacht3")),
                  std::tuple(1, 2, 0));
    };
    open([&] {
        check();
        form.choose("List1", 1);
        EXPECT_EQ(shown("txtObererRand"), "500");
        form.choose("List1", 0);
        check();
        host.spooler.bins.clear();
        form.choose("List1", 0);
        EXPECT_EQ(form.controls["cboSchacht3"].items, Lines{"Kein Schacht vorhanden!"});
        form.press("cmdAbbruch");
    });
    EXPECT_EQ(host.settings.keys.at(runtime::upperCase(productKey + std::string("Laser 1"))),
              before.at(runtime::upperCase(productKey + std::string("Laser 1"))));
    EXPECT_TRUE(form.closed && selectionFile().empty());
}

TEST_F(DruckerAuswahl, EveryEditIsStoredAtOnceForThePrinterAsListed) {
    open([this] {
        form.choose("List1", 1);
        form.controls["txtLinkerRand"].text.clear();
        form.type("txtLinkerRand", U" 1a ");
        form.controls["txtScaleFaktor"].text.clear();
        form.type("txtScaleFaktor", U"4.,5,x6");
        form.choose("cboSchacht2", 2);
        form.choose("cboSchacht1", 0);
        const std::string printer = R"(\\srv\Büro & Lager)";
        EXPECT_EQ(stored("LinkerRand", printer) + stored("ScaleFaktor", printer), "1a4,56");
        EXPECT_EQ(stored("Schacht2", printer) + stored("Schacht1", printer), "-320007");
        EXPECT_EQ(stored("ObererRand", printer) + stored("Schacht3", printer), "(fehlt)(fehlt)");
        form.press("cmdAbbruch");
    });
    EXPECT_GT(host.settings.commits, 1);
    EXPECT_TRUE(selectionFile().empty());
}

TEST_F(DruckerAuswahl, DefaultValuesAreWrittenWhateverWasThere) {
    put("Schacht2", "1");
    open([this] { form.press("cmdStandardwerte"); });
    EXPECT_EQ(stored("LinkerRand") + stored("ObererRand") + stored("Zeilenabstand") + stored("ScaleFaktor"),
              "05002225,5");
    EXPECT_EQ(stored("Schacht1") + stored("Schacht2") + stored("Schacht3"), "777");
    EXPECT_EQ(selected("cboSchacht2"), 0);
}

TEST_F(DruckerAuswahl, OkRecordsThePrinterAndSaysWhereItCannot) {
    open([this] {
        form.choose("List1", 1);
        host.system.unwritable.insert("C:\\KORVANO\\KRVWIN.ASW");
        form.press("cmdOK");
        EXPECT_FALSE(form.closed);
        EXPECT_NE(lastBox().find("KRVWIN.ASW"), std::string::npos);
        host.system.unwritable.clear();
        form.events->doubleClicked("List1");
    });
    EXPECT_TRUE(form.closed);
    EXPECT_EQ(selectionFile(), Lines{"\\\\srv\\Büro & Lager\r\n"});
}

TEST_F(DruckerAuswahl, UnfoldsAndFoldsAndSelectsTextWithTheFocus) {
    open([this] {
        EXPECT_EQ(form.height.twips, 2925);
        form.press("cmdErweitert");
        EXPECT_EQ(std::tuple(form.height.twips, shown("cmdErweitert"), form.controls["cmdTestseite"].tabStop),
                  std::tuple(7500, "Erweitert <<", true));
        form.press("cmdErweitert");
        EXPECT_EQ(std::tuple(form.height.twips, shown("cmdErweitert"), form.controls["cmdTestseite"].tabStop),
                  std::tuple(3000, "Erweitert >>", false));
        form.events->focused("txtObererRand");
        EXPECT_TRUE(form.controls.at("txtObererRand").textSelected);
        form.press("cmdDruckerordner");
        EXPECT_EQ(host.forms.folders, 1);
        EXPECT_TRUE(lastBox().empty());
    });
}

TEST_F(DruckerAuswahl, TestsWriteTheHostsLanguageAndPrintIt) {
    const std::string file = "C:\\Programme\\TESTDRUC.OUT";
    host.dialogs.answer = platform::Answer::cancel;
    open([&] {
        form.press("cmdTestseite");
        EXPECT_FALSE(host.system.files.contains(file));
        host.dialogs.answer = platform::Answer::ok;
        form.press("cmdTestseite");
        const std::string page = host.system.files.at(file);
        EXPECT_TRUE(page.starts_with("^TR1^10^UE^FE^KETestdruck: Schriftattribute^UA^FA^KA\r\n\r\nNormalschrift\r\n"));
        using namespace std::string_literals;
        for (const std::string& part : {"\r\nSch\x94nschrift\r\n"s,
                                        "^LR\0Normaler Rand.\r\n^LR\n10 Zeichen (Pica) einger\x81"
                                        "ckt.\r\n^LR\0\r\n"s,
                                        "\r\n128='\x80'   129='\x81'   "s, "   135='\x87'\r\n136="s,
                                        "   255='\xFF'\r\n\r\n\r\nTreiber: Laser 1\r\n"
                                        "21.11.2026 13:45:07\r\n\r\nEnde der Testseite\r\n\f"s}) {
            EXPECT_NE(page.find(part), std::string::npos) << part;
        }
        EXPECT_EQ(std::ranges::count(page, '\n'), 56 + 1);
        EXPECT_EQ(host.spooler.device.pages().size(), 1U);
        EXPECT_TRUE(form.controls["cmdTestseite"].enabled && form.title == "Korvano - Druckerauswahl");

        host.system.unwritable.insert(file);
        form.press("cmdSchachtTest");
        const std::string trays = host.userFiles.files.at("C:\\Daten\\Testdruck\\TESTDRUC.OUT");
        EXPECT_TRUE(trays.starts_with("^TR1Schacht1 Blatt1\r\n\r\n^10^UE"));
        EXPECT_NE(trays.find("\f^TR3Schacht3 Blatt2\r\n\r\n"), std::string::npos);
        EXPECT_TRUE(
            trays.ends_with("\fm\x94gliche Sch\x84"
                            "chte zur Auswahl:\r\n  Automatik, 7\r\n  Kassette 1, 1\r\n"
                            "  Umschlag, -32000\r\n"));
        EXPECT_EQ(host.dialogs.boxes.at(2).text.substr(0, 42), "Dieser Test druckt insgesamt 6 Seiten, von");
    });
}

TEST_F(DruckerAuswahl, ALongTestIsSeenToGoOn) {
    host.dialogs.answer = platform::Answer::ok;
    settings::FDruckerAuswahl selection(session, [this](const auto&, const auto&, const auto& letEventsRun) {
        const auto after = [&](int milliseconds) {
            host.system.sleptMilliseconds += milliseconds;
            letEventsRun();
            return std::pair(form.repaints, form.title.substr(form.title.size() - 5));
        };
        EXPECT_EQ(after(50), std::pair(0, std::string("swahl")));
        EXPECT_EQ(after(60), std::pair(1, std::string("swahl")));
        EXPECT_EQ(after(2900), std::pair(2, std::string("(3 s)")));
        EXPECT_FALSE(form.controls["cmdTestseite"].enabled);
        form.press("cmdOK");  // counts for nothing meanwhile
        EXPECT_FALSE(form.closed);
    });
    selection.Show();
    form.press("cmdTestseite");
    EXPECT_EQ(form.title, "Korvano - Druckerauswahl");
}

TEST_F(DruckerAuswahl, TheGraphicTestLeavesTheLogOfItsRunAlone) {
    host.dialogs.answer = platform::Answer::ok;
    host.system.files["C:\\KORVANO\\KRVWinPr.log"] = "alt";
    put("ScaleFaktor", "4,4");
    open([this] {
        form.press("cmdGrafikseite");
        EXPECT_EQ(
            host.system.files.at("C:\\Programme\\TESTDRUC.OUT"),
            "^GRGR-Grafikdrucktest\r\n\r\n\r\n\r\nScalefaktor: 4,4\r\nTreiber: Laser 1\r\n21.11.2026 13:45:07\r\n\r\n"
            "\f");
        EXPECT_FALSE(host.system.files.contains("C:\\KORVANO\\KRVWinPr.log"));
        const std::size_t lines = host.logLines().size();
        EXPECT_GT(lines, 10U);
        form.choose("List1", 1);
        EXPECT_EQ(host.logLines().size(), lines);
    });
}

TEST_F(DruckerAuswahl, APrintServerThatDoesNotAnswerLeavesTheChoiceAsItIs) {
    host.system.files["C:\\KORVANO\\KRVWIN.ASW"] = "Laser 1\r\n";
    host.spooler.silentFor = 1000;
    open([this] {
        EXPECT_EQ(form.controls["List1"].items, (Lines{"Laser 1", "Eingebaut"}));
        EXPECT_NE(lastBox().find("antwortet nicht"), std::string::npos);
        form.press("cmdOK");
    });
    EXPECT_EQ(selectionFile(), Lines{"Laser 1\r\n"});
}

TEST_F(DruckerAuswahl, WithoutPrintersOrADesktopTheUserIsTold) {
    host.forms.hasDesktop = false;
    open();
    EXPECT_NE(lastBox().find("kein Bildschirm"), std::string::npos);
    host.spooler.names.clear();
    open();
    EXPECT_EQ(lastBox(), "Es sind keine Druckertreiber unter Windows eingerichtet!");
}

}  // namespace
