// The job list on a form in memory, and the kept jobs below its queue.
#include "joblist/FDruckauftraege.h"
#include "unit/support/core_test.h"

namespace {

using testing_support::FormState;
using testing_support::Lines;
namespace flag = platform::job_status;

constexpr const char* keptFolder = "C:\\Daten\\Nicht gedruckt\\";

class JobList : public testing_support::CoreTest {
protected:
    JobList() {
        host.printJobs.add(12, "RECHNUNG.OUT", "Meier", flag::printing);
        host.printJobs.add(7, "LISTE.OUT", "DOM\\schulz", flag::paused);
        host.printJobs.add(9, "BRIEF.OUT", R"(FIRMA\MEIER)");
    }

    // Opens the form; the user's steps come before it is closed.
    void open(const std::function<void()>& user, const std::string& arguments = "") {
        host.forms.atRun = user;
        start("/AUFTRAEGE" + arguments);
    }
    // The buttons of the queue that can be pressed.
    std::string usable() const {
        std::string names;
        for (const char* name : {"cmdAnhalten", "cmdFortsetzen", "cmdAbbrechen", "cmdNeuStarten", "cmdNachVorn",
                                 "cboPrioritaet", "cmdDruckerFortsetzen"}) {
            names += form.controls.at(name).enabled ? std::string(name).substr(3) + " " : "";
        }
        return names;
    }
    std::vector<int> rows(const std::string& table = "tblAuftraege") const { return form.controls.at(table).rows; }
    std::string shown(const std::string& control) const { return form.controls.at(control).text; }
    Lines takeDone() { return std::exchange(host.printJobs.done, {}); }
    void pass(int milliseconds) {
        host.system.sleptMilliseconds += milliseconds;
        form.events->timer();
    }
    // A job of the host that fails.
    void keep(const std::string& content = "x") {
        host.system.files["A.OUT"] = content;
        host.addPicture("LOGO.BMP", 2, 1);
        host.spooler.device.onEnd = [] { throw platform::SpoolerError(1280, "lehnt ab"); };
        start("A.OUT LOGO.BMP \"laser 1\" /TWOPASS");
        host.spooler.device.onEnd = nullptr;
        host.system.files.erase("KRVWINPR.OK");
        host.system.files.erase("A.OUT");
        host.dialogs = {};
    }

    FormState& form = host.forms.form;
};

TEST_F(JobList, ShowsTheQueueOfThePrinterAndKeepsItsPlace) {
    host.spooler.names = {"Fax", "Laser 1"};
    host.printJobs.queue[0].pages = 12;
    host.printJobs.queue[0].pagesPrinted = 3;
    host.printJobs.queue[0].size = 1536;
    host.printJobs.queue[0].priority = 50;
    host.printJobs.queue[0].computer = "PC1";
    const auto look = [this] {
        EXPECT_EQ(form.controls.at("cboDrucker").selected, 1);
        EXPECT_EQ(shown("lblDruckerStatus"), "Status: Ready");
        EXPECT_EQ(form.row("tblAuftraege", 0), "1|RECHNUNG.OUT|Meier|Wird gedruckt|3/12|1,5 KB||0 min|12|50|PC1");
        EXPECT_EQ(form.row("tblAuftraege", 1), "2|LISTE.OUT|DOM\\schulz|Angehalten||||0 min|7||");
        EXPECT_EQ(form.row("tblAuftraege", 3) + form.row("tblAufbewahrt", 0), "||||||||||||||");
        form.place = {10, 20, 900, 600, false};
        form.press("cmdSchliessen");
    };
    open(look, " \"LASER 1\" /DEBUG");
    EXPECT_TRUE(form.closed && host.logged("> Auftragslistebeginn") && host.logged("> Auftragslisteende"));
    open(
        [&] {
            EXPECT_EQ(form.place.width, 900);
            look();
        },
        " Tinte");
    host.spooler.names.clear();
    form = {};
    start("/auftraege");
    EXPECT_EQ(lastBox(), "Es sind keine Druckertreiber unter Windows eingerichtet!");
    EXPECT_FALSE(form.shown);
}

TEST_F(JobList, ButtonsAndKeysDoWhatMakesSenseForTheSelection) {
    open([this] {
        EXPECT_EQ(usable(), "");
        form.chooseRows("tblAuftraege", {0});
        EXPECT_EQ(usable(), "Anhalten Abbrechen NeuStarten Prioritaet ");
        form.chooseRows("tblAuftraege", {1, 2});
        EXPECT_EQ(usable(), "Anhalten Fortsetzen Abbrechen NeuStarten NachVorn Prioritaet ");
        form.press("cmdAnhalten");
        form.press("cmdFortsetzen");
        form.press("cmdNeuStarten");
        form.enter("cboPrioritaet", "100");
        form.enter("cboPrioritaet", "60");
        EXPECT_EQ(takeDone(), (Lines{"pause 9", "resume 7", "resume 9", "restart 7", "restart 9", "priority 60 7",
                                     "priority 60 9"}));
        EXPECT_EQ(shown("cboPrioritaet"), "60");
        form.press("cmdNachVorn");
        EXPECT_EQ(takeDone(), (Lines{"front 9", "front 7"}));
        EXPECT_EQ(rows(), (std::vector{0, 1})) << "the selection follows its jobs";

        host.dialogs.answer = platform::Answer::no;
        form.pressKey(platform::Key::deleteKey);
        EXPECT_EQ(lastBox(), "Sollen 2 Aufträge abgebrochen werden? 1 davon sind von anderen Benutzern.");
        form.chooseRows("tblAuftraege", {0});
        form.pressKey(platform::Key::deleteKey);
        EXPECT_EQ(lastBox(), "Soll der Auftrag „LISTE.OUT“ von DOM\\schulz abgebrochen werden?");
        form.chooseRows("tblAuftraege", {1});
        form.pressKey(platform::Key::deleteKey);
        EXPECT_EQ(takeDone(), Lines{"cancel 9"}) << "one's own goes without a question";
        EXPECT_EQ(form.controls.at("tblAuftraege").rowCount, 2);

        host.printJobs.refuses = {{7, "darf nicht"}, {12, "kann nicht"}};
        host.dialogs.answer = platform::Answer::yes;
        form.chooseRows("tblAuftraege", {0, 1});
        form.press("cmdAbbrechen");
        EXPECT_EQ(lastBox(), "„LISTE.OUT“:\r\ndarf nicht\r\n\r\n„RECHNUNG.OUT“:\r\nkann nicht");
        host.spooler.record.status = platform::printer_status::paused;
        form.pressKey(platform::Key::f5);
        EXPECT_EQ(shown("lblDruckerStatus"), "Status: Paused");
        form.press("cmdDruckerFortsetzen");
        EXPECT_EQ(takeDone(), Lines{"resume Laser 1"});
        EXPECT_EQ(form.controls.at("cmdDruckerFortsetzen").enabled, false);
    });
}

TEST_F(JobList, ReadsTheQueueWhenItMayHaveChangedAndKeepsItWhileNobodyAnswers) {
    auto& jobs = host.printJobs;
    open([&] {
        EXPECT_EQ(form.timer, 250);
        jobs.lists = 0;
        form.chooseRows("tblAuftraege", {2});
        jobs.queue.erase(jobs.queue.begin());
        pass(900);
        EXPECT_EQ(jobs.lists, 0);
        pass(100);
        EXPECT_EQ(rows(), std::vector{1}) << "every second without events, and the selection stays with its job";
        host.spooler.silentFor = 3;
        pass(1000);
        EXPECT_EQ(
            shown("lblStatus"),
            "Die Warteschlange kann nicht gelesen werden: Druckerfehler: antwortet nicht Gezeigt wird, was vorher "
            "darin stand.");
        EXPECT_EQ(form.row("tblAuftraege", 1).substr(0, 11), "3|BRIEF.OUT");
        jobs.lists = 0;
        pass(9000);
        pass(1000);
        pass(10000);
        EXPECT_EQ(jobs.lists, 0) << "not before it answers";
        jobs.hasEvents = true;
        pass(10000);
        EXPECT_EQ(jobs.lists, 1);
        EXPECT_EQ(shown("lblStatus"), "");
        pass(4000);
        EXPECT_EQ(jobs.lists, 1);
        jobs.changed = true;
        pass(0);
        EXPECT_EQ(jobs.lists, 2) << "at once where there are events";
        host.system.looksTake = 200;
        pass(5000);
        EXPECT_EQ(jobs.lists, 3);
        jobs.changed = true;
        pass(1000);
        EXPECT_EQ(jobs.lists, 3) << "what takes long is read seldom";
    });
}

TEST_F(JobList, AKeptJobIsPrintedAgainAsTheHostWantedItOrStaysWithTheNewReason) {
    keep();
    keep("y");
    const std::string first = std::string(keptFolder) + "A (1).OUT";
    host.userFiles.files[first + ".pdf"] = "fertig";
    open([&] {
        EXPECT_EQ(form.row("tblAufbewahrt", 0),
                  "A.OUT|21.11.2026 13:45:07|Laser 1|Fehler 482: Druckerfehler: lehnt ab|");
        EXPECT_EQ(form.controls.at("tblAufbewahrt").rowCount, 2);
        form.chooseRows("tblAuftraege", {0});
        form.chooseRows("tblAufbewahrt", {0, 1});
        EXPECT_TRUE(rows().empty()) << "rows of one table only";

        host.system.missingFolders = {"C:\\KORVANO"};
        form.press("cmdNochEinmal");
        EXPECT_NE(lastBox().find("„A.OUT“ wurde nicht gedruckt und bleibt aufbewahrt.\r\n\r\nDer Ordner"),
                  std::string::npos);
        host.system.missingFolders.clear();
        host.spooler.device.onEnd = [] { throw platform::SpoolerError(1280, "Papier fehlt"); };
        form.press("cmdNochEinmal");
        EXPECT_NE(lastBox().find("Papier fehlt\r\n\r\nWeitere 1 wurden nicht mehr versucht."), std::string::npos);
        EXPECT_EQ(form.row("tblAufbewahrt", 0).substr(26), "Laser 1|Fehler 482: Druckerfehler: Papier fehlt|");
        host.spooler.device.onEnd = [] {
            throw platform::SpoolerError(1223, "abgebrochen", platform::Recovery::cancelled);
        };
        form.press("cmdNochEinmal");
        EXPECT_EQ(host.userFiles.files.at(first), "x") << "never lost";

        host.spooler.device.onEnd = nullptr;
        host.userFiles.files[first + ".txt"].replace(host.userFiles.files[first + ".txt"].find("Laser 1"), 7, "Weg");
        form.pressKey(platform::Key::f5);
        host.system.directory = "D:\\ANDERS";
        host.spooler.device.onBeginPage = [&](std::size_t) { EXPECT_EQ(host.system.directory, "C:\\KORVANO"); };
        form.press("cmdNochEinmal");
        EXPECT_EQ(lastBox(),
                  "Der Drucker „Weg“ ist nicht mehr eingerichtet. Soll stattdessen auf „Laser 1“ gedruckt werden?");
        EXPECT_EQ(host.spooler.device.documents.back()->title, "A.OUT");
        EXPECT_EQ(host.spooler.device.pages().at(0).texts.at(0).text, "y");
        EXPECT_EQ(host.spooler.device.pages().at(0).pictures.size(), 1U);
        EXPECT_EQ(host.system.directory, "D:\\ANDERS");
        EXPECT_TRUE(host.userFiles.files.empty()) << "copy, text and finished pages";
        EXPECT_EQ(form.controls.at("tblAufbewahrt").rowCount, 0);
        EXPECT_TRUE(host.dialogs.notifications.empty() && !host.system.files.contains("KRVWINPR.OK"));
    });
}

TEST_F(JobList, PrintingAgainTellsHowFarItIsAndEndsWhenTheUserWantsThat) {
    keep("1\f2\f3\f");
    host.system.looksTake = 300;
    FormState& dialog = host.forms.dialog;
    Lines told;
    open([&] {
        form.chooseRows("tblAufbewahrt", {0});
        host.forms.atServe = [&] {
            form.press("cmdNochEinmal");  // it is printing
            told.push_back(dialog.controls.at("lblFortschritt").text);
            if (told.back().starts_with("Seite 3")) {
                dialog.press("cmdAbbrechen");
            }
        };
        form.press("cmdNochEinmal");
        EXPECT_EQ(lastBox(), "„A.OUT“ wurde nicht gedruckt und bleibt aufbewahrt.\r\n\r\nDer Druck wurde abgebrochen.");
        EXPECT_EQ(dialog.controls.at("lblAuftrag").text, "A.OUT");
        EXPECT_EQ(told.back(), "Seite 3 von 3 wird gedruckt …");
        EXPECT_FALSE(host.spooler.device.documents.back()->delivered);
        host.forms.atServe = [&] { told.push_back(dialog.controls.at("lblFortschritt").text); };
        host.spooler.device.onEnd = [&] {
            if (!told.back().starts_with("Warte auf den Drucker … (")) {
                throw platform::SpoolerError(1, "antwortet nicht", platform::Recovery::possible);
            }
        };
        form.press("cmdNochEinmal");
        EXPECT_TRUE(host.userFiles.files.empty() && form.repaints > 0);
    });
}

TEST_F(JobList, WhatLiesInTheFolderIsShownAsFarAsItIsKnownAndDeletedWhenAskedFor) {
    host.userFiles.files = {{std::string(keptFolder) + "B (1).OUT", "x"},
                            {std::string(keptFolder) + "C (1).OUT", "x"},
                            {std::string(keptFolder) + "C (1).OUT (2).pdf", "x"},
                            {std::string(keptFolder) + "C (1).OUT.txt",
                             "\xEF\xBB\xBF...\r\nDruckdatei: C.OUT\r\nZeit:  heute\r\nGrund:\r\nDruckdatei: D\r\n"
                             "Fertige Seiten: C:\\KORVANO\\A.OUT\r\n"
                             "Fertige Seiten: C:\\Daten\\Nicht gedruckt\\C (1).OUT (2).pdf"},
                            {"C:\\KORVANO\\A.OUT", "des Hosts"}};
    open([&] {
        EXPECT_EQ(form.row("tblAufbewahrt", 0), "B (1).OUT||||");
        EXPECT_EQ(form.row("tblAufbewahrt", 1),
                  "C.OUT|heute||Wird gerade gedruckt, oder das Programm wurde vorher beendet.|");
        EXPECT_EQ(form.controls.at("tblAufbewahrt").rowCount, 2);
        form.chooseRows("tblAufbewahrt", {0});
        form.press("cmdNochEinmal");
        EXPECT_NE(lastBox().find("sagt nicht, aus welchem Ordner"), std::string::npos);
        form.press("cmdOrdner");
        EXPECT_EQ(host.forms.shownInFolder, std::string(keptFolder) + "B (1).OUT");
        form.chooseRows("tblAufbewahrt", {1});
        host.dialogs.answer = platform::Answer::no;
        form.press("cmdNochEinmal");
        form.pressKey(platform::Key::deleteKey);
        EXPECT_EQ(form.controls.at("tblAufbewahrt").rowCount, 2);
        host.dialogs.answer = platform::Answer::yes;
        form.pressKey(platform::Key::deleteKey);
        EXPECT_EQ(form.controls.at("tblAufbewahrt").rowCount, 1);
        EXPECT_EQ(host.userFiles.files.size(), 2U);
        EXPECT_TRUE(host.userFiles.files.contains("C:\\KORVANO\\A.OUT")) << "not the job's, whatever the text says";
        EXPECT_TRUE(host.spooler.device.documents.empty());
    });
}

}  // namespace
