// What the job list shows of the queue, and which of its buttons make sense now.
#include <algorithm>
#include <unordered_set>

#include "joblist/FDruckauftraege.h"
#include "joblist/job_state.h"
#include "runtime/utf8.h"

namespace joblist {

// The selection stays with the jobs, wherever they stand now.
void FDruckauftraege::showQueue() {
    const Jobs& jobs = reading_.jobs();
    const std::unordered_set<std::uint32_t> selected(selection_.begin(), selection_.end());
    std::vector<int> rows;
    selection_.clear();
    for (std::size_t row = 0; row < jobs.size() && rows.size() < selected.size(); ++row) {
        if (selected.contains(jobs[row].JobNumber())) {
            rows.push_back(static_cast<int>(row));
            selection_.push_back(jobs[row].JobNumber());
        }
    }
    form_->setRowCount("tblAuftraege", static_cast<int>(jobs.size()));
    if (form_->selectedRows("tblAuftraege") != rows) {
        form_->selectRows("tblAuftraege", rows, false);
    }
}

void FDruckauftraege::refresh() {
    show("lblDruckerStatus", reading_.printer().empty() ? "" : "Status: " + runtime::shown(reading_.printerStatus()));
    show("lblAuftraege", "&Aufträge (" + std::to_string(reading_.jobs().size()) + ")");
    show("lblAufbewahrt", "N&icht gedruckt (" + std::to_string(kept_.size()) + ")");
    show("lblStatus", statusText());
    enableCommands();
}

std::string FDruckauftraege::statusText() const {
    if (run_) {
        return run_->progress();
    }
    const std::string& ofQueue = reading_.trouble();
    if (!ofQueue.empty()) {
        return "Die Warteschlange kann nicht gelesen werden: " + runtime::shown(ofQueue) +
               (reading_.jobs().empty() ? "" : " Gezeigt wird, was vorher darin stand.");
    }
    return trouble_.empty() ? std::string() : "Es werden nicht alle Drucker gezeigt: " + runtime::shown(trouble_);
}

void FDruckauftraege::enableCommands() {
    const Jobs jobs = selectedJobs();
    const auto enableFor = [&](const char* control, const auto& predicate) {
        enable(control, !run_ && std::any_of(jobs.begin(), jobs.end(), predicate));
    };
    const auto samePriority = [&](const auto& job) { return job.Priority() == jobs.front().Priority(); };
    enableFor("cmdAnhalten", canBePaused);
    enableFor("cmdFortsetzen", canBeResumed);
    enableFor("cmdAbbrechen", canBeCancelled);
    enableFor("cmdNeuStarten", canBeRestarted);
    enableFor("cboPrioritaet", canBeCancelled);
    // Those that stand in front of all others are there already.
    const std::vector<int> rows = form_->selectedRows("tblAuftraege");
    enable("cmdNachVorn", !run_ && !rows.empty() && rows.back() >= static_cast<int>(rows.size()));
    show("cboPrioritaet",
         !jobs.empty() && jobs.front().Priority() != 0 && std::all_of(jobs.begin(), jobs.end(), samePriority)
             ? std::to_string(jobs.front().Priority())
             : "");
    enable("cmdDruckerFortsetzen", !run_ && reading_.mayResumePrinter());
    enable("cmdNochEinmal", !run_ && !keptSelection_.empty());
    enable("cmdLoeschen", !run_ && !keptSelection_.empty());
    enable("cmdOrdner", keptSelection_.size() == 1);
}

void FDruckauftraege::show(const std::string& control, const std::string& text) {
    const auto [shown, isNew] = texts_.try_emplace(control, text);
    if (isNew || shown->second != text) {
        shown->second = text;
        form_->setText(control, text);
    }
}

void FDruckauftraege::enable(const std::string& control, bool enabled) {
    const auto [shown, isNew] = enabled_.try_emplace(control, enabled);
    if (isNew || shown->second != enabled) {
        shown->second = enabled;
        form_->setEnabled(control, enabled);
    }
}

// Events that come while a box is open change nothing underneath it.
platform::Answer FDruckauftraege::ask(const std::string& question) {
    busy_ = true;
    const platform::Answer answer = session_.platform.dialogs.messageBox(question, platform::Buttons::yesNo,
                                                                         platform::Icon::none, session_.program.title);
    busy_ = false;
    return answer;
}

void FDruckauftraege::tell(const std::string& text) {
    refresh();
    busy_ = true;
    session_.platform.dialogs.messageBox(text, platform::Buttons::ok, platform::Icon::critical, session_.program.title);
    busy_ = false;
}

}  // namespace joblist
