#include "messenger/order_runs.h"

#include <algorithm>

#include "messenger/file_in.h"
#include "runtime/error.h"
#include "runtime/program.h"
#include "runtime/text.h"
#include "runtime/utf8.h"
#include "startup/arguments/command_line.h"

namespace messenger {

namespace {

using startup::Mode;

Mode modeOf(const std::string& tail, platform::System& system, const std::string& folder) {
    startup::clsArguments arguments(tail);
    startup::takeSwitches(arguments);
    return startup::modeOf(arguments, [&](const std::string& name) { return system.fileExists(fileIn(folder, name)); });
}

// A graphic may be meant for the report behind it; a form stays open for as long as somebody looks at it.
bool keepsOthersWaiting(Mode mode) {
    return mode == Mode::report || mode == Mode::invert || mode == Mode::printGraphic;
}

}  // namespace

// That beside the messenger, and like it with ".exe" or without.
std::string OrderRuns::programFile() const {
    if (!desk_.settings.program.empty()) {
        return desk_.settings.program;
    }
    const bool isExe = runtime::upperCase(desk_.system.programFileName()).ends_with(".EXE");
    return fileIn(desk_.system.programDirectory(), std::string(runtime::programName) + (isExe ? ".exe" : ""));
}

bool OrderRuns::begin(const std::string& orderName, const Order& order) {
    const std::string tail = desk_.system.fromDosCodePage(order.tail);
    const Mode mode = modeOf(tail, desk_.system, desk_.folder().path());
    Run run;
    run.orderName = orderName;
    run.mark = order.mark;
    run.awaited = mode == Mode::report;
    try {
        if (!desk_.answer(orderName, {AnswerState::started, order.mark, {}})) {
            return false;
        }
        run.completionBefore = desk_.folder().completionMark();
        run.begunAt = now();
        run.program = desk_.messengerSystem.start(programFile(), desk_.folder(), tail);
    } catch (const runtime::Error& error) {
        desk_.refuse(orderName, order.mark, "KRVWinPr lässt sich nicht starten: " + error.message());
        return true;
    }
    run.othersWaitTo = keepsOthersWaiting(mode) ? run.begunAt + (run.awaited ? patience : behindCompletion) : 0;
    desk_.log(Desk::Severity::information, orderName + " begonnen, Prozess " +
                                               std::to_string(desk_.messengerSystem.processNumber(run.program)) +
                                               ": KRVWinPr " + runtime::shown(runtime::trimBlanks(tail)));
    if (!run.awaited) {
        desk_.answer(orderName, {AnswerState::notAwaited, order.mark, {}});
    }
    runs_.push_back(std::move(run));
    return true;
}

void OrderRuns::happened(const platform::MessengerEvent& event) {
    const auto run = std::ranges::find(runs_, event.program, &Run::program);
    if (run == runs_.end()) {
        return;
    }
    if (event.kind == platform::MessengerEvent::Kind::completionWritten) {
        completed(*run);
    } else if (event.kind == platform::MessengerEvent::Kind::programEnded) {
        ended(*run, event.how);
        runs_.erase(run);
    }
}

void OrderRuns::completed(Run& run) {
    if (run.awaited) {
        run.awaited = false;
        run.othersWaitTo = now() + behindCompletion;
        desk_.answer(run.orderName, {AnswerState::completed, run.mark, {}});
        desk_.log(Desk::Severity::information,
                  run.orderName + " fertig gelesen nach " + std::to_string(now() - run.begunAt) + " ms");
    }
}

// A program that crashed may have let the host go without a word to the messenger.
void OrderRuns::ended(const Run& run, const std::string& how) {
    const std::string text = "KRVWinPr ist zu Ende" + (how.empty() ? "" : " (" + how + ")");
    const std::string mark = run.awaited ? desk_.folder().completionMark() : std::string();
    if (!run.awaited || (!mark.empty() && mark != run.completionBefore)) {
        desk_.log(how.empty() ? Desk::Severity::information : Desk::Severity::warning,
                  run.orderName + ": " + text + " nach " + std::to_string(now() - run.begunAt) + " ms");
        if (run.awaited) {
            desk_.answer(run.orderName, {AnswerState::completed, run.mark, {}});
        }
        return;
    }
    const std::string failure = text +
                                ", ohne KRVWINPR.OK zu schreiben. Den Grund nennt eine Meldung auf dem Desktop oder, "
                                "mit /DEBUG, die Datei KRVWinPr.LOG.";
    desk_.answer(run.orderName, {AnswerState::failed, run.mark, failure});
    desk_.log(Desk::Severity::warning, run.orderName + ": " + failure);
}

bool OrderRuns::keepOthersWaiting() const {
    return std::ranges::any_of(runs_, [this](const Run& run) { return run.othersWaitTo > now(); });
}

std::optional<std::int64_t> OrderRuns::nextChange() const {
    std::optional<std::int64_t> next;
    for (const Run& run : runs_) {
        if (const std::int64_t left = run.othersWaitTo - now(); left > 0) {
            next = std::min(next.value_or(left), left);
        }
    }
    return next;
}

void OrderRuns::tellOverdue() {
    for (Run& run : runs_) {
        if (run.awaited && !run.overdue && run.othersWaitTo <= now()) {
            run.overdue = true;
            desk_.warn("KRVWinPr (Prozess " + std::to_string(desk_.messengerSystem.processNumber(run.program)) +
                       ") hat für den Auftrag " + run.orderName + " seit " + std::to_string(patience / 1000) +
                       " Sekunden kein KRVWINPR.OK geschrieben. Weitere Aufträge werden jetzt trotzdem ausgeführt.");
        }
    }
}

bool OrderRuns::awaitsCompletion() const {
    return std::ranges::any_of(runs_, [](const Run& run) { return run.awaited && !run.overdue; });
}

}  // namespace messenger
