#include "joblist/FDruckauftraege.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "joblist/druckauftraege_cells.h"
#include "joblist/druckauftraege_design.h"
#include "joblist/job_state.h"
#include "runtime/text.h"
#include "runtime/utf8.h"
#include "runtime/whole_number.h"
#include "settings/window_place.h"

namespace joblist {

namespace {

constexpr const char* keyOfForm = "Druckauftraege";
constexpr int sliceMilliseconds = 50;

bool isNamed(const std::string& name, const std::string& other) {
    return runtime::upperCase(name) == runtime::upperCase(other);
}

// A print service may keep document and owner of other users' jobs to itself.
std::string nameOf(const printer::CPrinterJob& job) {
    const std::string document = runtime::shown(job.Document());
    return "der Auftrag " + (document.empty() ? std::to_string(job.JobNumber()) : "„" + document + "“") + " von " +
           (job.User().empty() ? "jemand anderem" : runtime::shown(job.User()));
}

}  // namespace

FDruckauftraege::FDruckauftraege(session::Session& session, PrintAgain printAgain)
    : session_(session), printAgain_(std::move(printAgain)), reading_(session) {}

// The form comes first, so that a print service that takes its time keeps nobody waiting in front of nothing.
void FDruckauftraege::Show(const std::string& sDruckerTreiber) {
    form_ = session_.platform.forms.create(designOfDruckauftraege(), *this);
    form_->setItems("cboPrioritaet", {"99", "75", "50", "25", "1"});
    if (const auto place = settings::readWindowPlace(session_, keyOfForm)) {
        form_->setWindowPlace(*place);
    }
    readKept();
    refresh();
    form_->focus("tblAuftraege");
    form_->show();
    fillPrinters(sDruckerTreiber);
    cboDrucker_Click();
    form_->wantTimer(QueueReading::lookMilliseconds);
}

void FDruckauftraege::fillPrinters(const std::string& wanted) {
    printers_ = printersToShow(wanted);
    form_->setItems("cboDrucker", printers_);
    std::string shown = wanted;
    const auto find = [&] {
        return std::find_if(printers_.begin(), printers_.end(),
                            [&](const std::string& name) { return isNamed(name, shown); });
    };
    if (find() == printers_.end()) {
        try {
            shown = session_.platform.spooler.defaultPrinter();
        } catch (const platform::SpoolerError& error) {
            trouble_ = error.message();
        }
    }
    const auto found = find();
    const bool isFound = found != printers_.end();
    form_->select("cboDrucker", isFound ? static_cast<int>(found - printers_.begin()) : printers_.empty() ? -1 : 0);
}

// Where the printers cannot be asked for, those that are known all the same.
std::vector<std::string> FDruckauftraege::printersToShow(const std::string& wanted) {
    platform::Spooler& spooler = session_.platform.spooler;
    try {
        return spooler.printerNames();
    } catch (const platform::SpoolerError& error) {
        trouble_ = error.message();
        std::vector<std::string> known = {wanted, spooler.builtinPrinter()};
        if (isNamed(known[0], known[1])) {
            known.pop_back();
        }
        std::erase(known, "");
        return known;
    }
}

void FDruckauftraege::clicked(const std::string& control) {
    using Handler = void (FDruckauftraege::*)();
    struct Row {
        std::string_view control;
        Handler handler;
    };
    static constexpr std::array rows = {
        Row{"cboDrucker", &FDruckauftraege::cboDrucker_Click},
        Row{"tblAuftraege", &FDruckauftraege::tblAuftraege_Click},
        Row{"tblAufbewahrt", &FDruckauftraege::tblAufbewahrt_Click},
        Row{"cmdAnhalten", &FDruckauftraege::cmdAnhalten_Click},
        Row{"cmdFortsetzen", &FDruckauftraege::cmdFortsetzen_Click},
        Row{"cmdAbbrechen", &FDruckauftraege::cmdAbbrechen_Click},
        Row{"cmdNeuStarten", &FDruckauftraege::cmdNeuStarten_Click},
        Row{"cmdNachVorn", &FDruckauftraege::cmdNachVorn_Click},
        Row{"cboPrioritaet", &FDruckauftraege::cboPrioritaet_Click},
        Row{"cmdDruckerFortsetzen", &FDruckauftraege::cmdDruckerFortsetzen_Click},
        Row{"cmdAktualisieren", &FDruckauftraege::cmdAktualisieren_Click},
        Row{"cmdNochEinmal", &FDruckauftraege::cmdNochEinmal_Click},
        Row{"cmdLoeschen", &FDruckauftraege::cmdLoeschen_Click},
        Row{"cmdOrdner", &FDruckauftraege::cmdOrdner_Click},
        Row{"entfernen", &FDruckauftraege::removeSelected},
    };
    if (busy_) {
        return;
    }
    if (control == "cmdSchliessen") {
        cmdSchliessen_Click();
        return;
    }
    const auto* const row =
        std::find_if(rows.begin(), rows.end(), [&](const Row& known) { return known.control == control; });
    if (row != rows.end() && (!run_ || control.starts_with("tbl"))) {
        (this->*row->handler)();
        refresh();
    }
}

void FDruckauftraege::focused(const std::string& control) { form_->selectText(control); }

bool FDruckauftraege::accepts(const std::string& /*control*/, const std::string& /*text*/, char32_t character) {
    constexpr char32_t backspace = 8;
    return (character >= U'0' && character <= U'9') || character == backspace;
}

std::string FDruckauftraege::cell(const std::string& table, int row, int column) {
    const auto index = static_cast<std::size_t>(row);
    if (table == "tblAuftraege" && index < reading_.jobs().size()) {
        return jobCell(reading_.jobs()[index], row, column, session_.locale());
    }
    return table == "tblAufbewahrt" && index < kept_.size() ? keptCell(kept_[index], column) : std::string();
}

void FDruckauftraege::timer() {
    constexpr std::int64_t keptPause = 5000;
    if (busy_ || run_) {
        return;
    }
    const bool keptAsWell = session_.platform.system.elapsedMilliseconds() - keptReadAt_ >= keptPause;
    const bool read = reading_.look();
    if (read) {
        showQueue();
    }
    if (keptAsWell) {
        readKept();
    }
    if (read || keptAsWell) {
        refresh();
    }
}

void FDruckauftraege::idle() {
    if (run_ && !busy_) {
        workOnRun();
        refresh();
    }
}

void FDruckauftraege::closed() { session_.platform.forms.closeAll(); }

void FDruckauftraege::cboDrucker_Click() {
    const int index = form_->selected("cboDrucker");
    selection_.clear();
    show("lblStatus", "Der Drucker wird gefragt …");
    form_->repaint();
    reading_.choose(index < 0 ? std::string() : printers_[static_cast<std::size_t>(index)]);
    showQueue();
    refresh();
}

void FDruckauftraege::tblAuftraege_Click() {
    selection_.clear();
    for (const int row : form_->selectedRows("tblAuftraege")) {
        selection_.push_back(reading_.jobs()[static_cast<std::size_t>(row)].JobNumber());
    }
    if (!selection_.empty() && !keptSelection_.empty()) {
        keptSelection_.clear();
        form_->selectRows("tblAufbewahrt", {}, false);
    }
}

FDruckauftraege::Jobs FDruckauftraege::selectedJobs() const {
    Jobs jobs;
    for (const int row : form_->selectedRows("tblAuftraege")) {
        jobs.push_back(reading_.jobs()[static_cast<std::size_t>(row)]);
    }
    return jobs;
}

void FDruckauftraege::cmdAnhalten_Click() {
    act([](const auto& job) { job.Pause(); }, thoseOf(selectedJobs(), canBePaused));
}

void FDruckauftraege::cmdFortsetzen_Click() {
    act([](const auto& job) { job.Resume(); }, thoseOf(selectedJobs(), canBeResumed));
}

void FDruckauftraege::cmdAbbrechen_Click() {
    Jobs jobs = thoseOf(selectedJobs(), canBeCancelled);
    if (mayCancel(jobs)) {
        act([](const auto& job) { job.Cancel(); }, std::move(jobs));
    }
}

void FDruckauftraege::cmdNeuStarten_Click() {
    act([](const auto& job) { job.Restart(); }, thoseOf(selectedJobs(), canBeRestarted));
}

// The last one first, so that they keep their order.
void FDruckauftraege::cmdNachVorn_Click() {
    Jobs jobs = selectedJobs();
    std::reverse(jobs.begin(), jobs.end());
    act([](const auto& job) { job.MoveToFront(); }, std::move(jobs));
}

void FDruckauftraege::cboPrioritaet_Click() {
    const std::string typed = form_->text("cboPrioritaet");
    const auto priority = runtime::wholeNumber<std::uint32_t>(runtime::trimBlanks(typed));
    texts_.erase("cboPrioritaet");
    if (!priority || *priority < platform::lowestPriority || *priority > platform::highestPriority) {
        return;
    }
    act([value = *priority](const auto& job) { job.Priority(value); },
        thoseOf(selectedJobs(), [&](const auto& job) { return job.Priority() != *priority; }));
}

bool FDruckauftraege::isOwn(const printer::CPrinterJob& job) const {
    const std::string own = session_.platform.system.userName();
    // "DOMÄNE\meier"
    return !own.empty() && isNamed(job.User().substr(job.User().rfind('\\') + 1), own);
}

bool FDruckauftraege::mayCancel(const Jobs& jobs) {
    const auto others = std::count_if(jobs.begin(), jobs.end(), [this](const auto& job) { return !isOwn(job); });
    if (jobs.size() == 1 && others == 1) {
        return ask("Soll " + nameOf(jobs.front()) + " abgebrochen werden?") == platform::Answer::yes;
    }
    const std::string ofOthers = others > 0 ? " " + std::to_string(others) + " davon sind von anderen Benutzern." : "";
    return jobs.size() < 2 || ask("Sollen " + std::to_string(jobs.size()) + " Aufträge abgebrochen werden?" +
                                  ofOthers) == platform::Answer::yes;
}

void FDruckauftraege::act(JobAction action, Jobs jobs) {
    if (!jobs.empty()) {
        run_.emplace(std::move(action), std::move(jobs));
        workOnRun();
    }
}

void FDruckauftraege::workOnRun() {
    run_->work(session_.platform.system, sliceMilliseconds);
    form_->wantIdle(!run_->done());
    if (run_->done()) {
        const std::string refusals = run_->refusals();
        run_.reset();
        reading_.read();
        showQueue();
        if (!refusals.empty()) {
            tell(refusals);
        }
    }
}

void FDruckauftraege::cmdDruckerFortsetzen_Click() {
    try {
        session_.platform.printJobs.resumePrinter(reading_.printer());
    } catch (const platform::SpoolerError& error) {
        tell("„" + runtime::shown(reading_.printer()) + "“:\r\n" + error.message());
    }
    cmdAktualisieren_Click();
}

void FDruckauftraege::cmdAktualisieren_Click() {
    if (!reading_.printer().empty()) {
        reading_.read();
        showQueue();
    }
    readKept();
}

void FDruckauftraege::removeSelected() {
    if (!selection_.empty()) {
        cmdAbbrechen_Click();
    } else if (!keptSelection_.empty()) {
        cmdLoeschen_Click();
    }
}

void FDruckauftraege::cmdSchliessen_Click() {
    run_.reset();
    settings::keepWindowPlace(session_, keyOfForm, form_->windowPlace());
    session_.storeSettings();
    form_->close();
}

}  // namespace joblist
