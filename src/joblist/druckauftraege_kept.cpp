// The job list's kept jobs: printing them again, deleting them, showing where they are.
#include <algorithm>
#include <utility>

#include "joblist/FDruckauftraege.h"
#include "joblist/druckauftraege_cells.h"
#include "report/FFortschritt.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace joblist {

void FDruckauftraege::readKept() {
    Kept jobs = report::keptJobs(session_);
    keptReadAt_ = session_.platform.system.elapsedMilliseconds();
    if (jobs != kept_) {
        kept_ = std::move(jobs);
        showKept();
    }
}

// The selection stays with the jobs.
void FDruckauftraege::showKept() {
    const std::vector<std::string> selected = std::exchange(keptSelection_, {});
    std::vector<int> rows;
    for (std::size_t row = 0; row < kept_.size(); ++row) {
        if (std::find(selected.begin(), selected.end(), kept_[row].path()) != selected.end()) {
            rows.push_back(static_cast<int>(row));
            keptSelection_.push_back(kept_[row].path());
        }
    }
    form_->setRowCount("tblAufbewahrt", static_cast<int>(kept_.size()));
    form_->selectRows("tblAufbewahrt", rows, false);
}

void FDruckauftraege::tblAufbewahrt_Click() {
    keptSelection_.clear();
    for (const report::KeptEntry& job : selectedKept()) {
        keptSelection_.push_back(job.path());
    }
    if (!keptSelection_.empty() && !selection_.empty()) {
        selection_.clear();
        form_->selectRows("tblAuftraege", {}, false);
    }
}

FDruckauftraege::Kept FDruckauftraege::selectedKept() const {
    Kept jobs;
    for (const int row : form_->selectedRows("tblAufbewahrt")) {
        jobs.push_back(kept_[static_cast<std::size_t>(row)]);
    }
    return jobs;
}

void FDruckauftraege::cmdNochEinmal_Click() {
    Kept jobs = selectedKept();
    if (!mayPrintAgain(jobs)) {
        return;
    }
    const std::string failure = printAllAgain(jobs);
    cmdAktualisieren_Click();
    if (!failure.empty()) {
        tell(failure);
    }
}

// A printer that is no more is replaced by the one that is shown, where the user wants that.
bool FDruckauftraege::mayPrintAgain(Kept& jobs) {
    const auto isGone = [this](const report::KeptEntry& job) {
        const std::string name = runtime::upperCase(job.text.printer);
        return !name.empty() && trouble_.empty() &&
               std::none_of(printers_.begin(), printers_.end(),
                            [&](const std::string& known) { return runtime::upperCase(known) == name; });
    };
    const auto gone = std::find_if(jobs.begin(), jobs.end(), isGone);
    const bool underWay =
        std::any_of(jobs.begin(), jobs.end(), [](const auto& job) { return job.text.reason.empty(); });
    if (underWay && ask("Der Auftrag wird vielleicht gerade noch gedruckt. Soll er trotzdem noch einmal gedruckt "
                        "werden?") != platform::Answer::yes) {
        return false;
    }
    if (gone != jobs.end() &&
        ask("Der Drucker „" + gone->text.printer + "“ ist nicht mehr eingerichtet. Soll stattdessen auf „" +
            runtime::shown(reading_.printer()) + "“ gedruckt werden?") != platform::Answer::yes) {
        return false;
    }
    for (auto job = gone; job != jobs.end(); ++job) {
        job->text.printer = isGone(*job) ? reading_.printer() : job->text.printer;
    }
    return true;
}

// The next ones would wait for the same printer as long as the one that failed.
std::string FDruckauftraege::printAllAgain(const Kept& jobs) {
    std::string failure;
    busy_ = true;
    report::FFortschritt fortschritt(session_, *form_);
    for (std::size_t i = 0; i < jobs.size() && failure.empty(); ++i) {
        const std::string name = keptName(jobs[i]);
        show("lblStatus", "„" + name + "“ wird gedruckt …");
        form_->repaint();
        fortschritt.begin(name);
        const std::string reason = printAgain_(jobs[i], fortschritt.progress(), [&] { fortschritt.look(); });
        if (!reason.empty()) {
            const std::size_t left = jobs.size() - i - 1;
            failure = "„" + name + "“ wurde nicht gedruckt und bleibt aufbewahrt.\r\n\r\n";
            failure += reason;
            failure += left > 0 ? "\r\n\r\nWeitere " + std::to_string(left) + " wurden nicht mehr versucht." : "";
        }
    }
    busy_ = false;
    return failure;
}

void FDruckauftraege::cmdLoeschen_Click() {
    const Kept jobs = selectedKept();
    const std::string what = jobs.size() == 1 ? "Soll „" + keptName(jobs.front()) + "“ gelöscht werden?"
                                              : "Sollen " + std::to_string(jobs.size()) + " Aufträge gelöscht werden?";
    if (jobs.empty() ||
        ask(what + " Danach kann nicht mehr gedruckt werden, was hier aufbewahrt ist.") != platform::Answer::yes) {
        return;
    }
    for (const report::KeptEntry& job : jobs) {
        report::removeKeptJob(session_, job);
    }
    readKept();
    if (!keptSelection_.empty()) {
        tell("„" + keptName(selectedKept().front()) +
             "“ kann nicht gelöscht werden; vielleicht ist die Datei gerade "
             "geöffnet:\r\n" +
             keptSelection_.front());
    }
}

void FDruckauftraege::cmdOrdner_Click() {
    if (!keptSelection_.empty() && !session_.platform.forms.showInFolder(keptSelection_.front())) {
        tell("Der Ordner kann nicht gezeigt werden. Die Datei ist:\r\n" + keptSelection_.front());
    }
}

}  // namespace joblist
