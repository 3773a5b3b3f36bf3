#include <cstdint>
#include <optional>

#include "report/background.h"
#include "report/page_cutter.h"
#include "report/page_interpreter.h"
#include "report/print_run.h"
#include "report/tray_selection.h"
#include "runtime/numbers.h"

namespace report {

namespace {

void toPageStart(PrintRun& run) {
    run.printer.CurrentY(run.state.settings.lngKopfabstand);
    run.printer.CurrentX(run.state.settings.lngLinkerRand);
}

void printPage(PrintRun& run, PageInterpreter& interpreter, std::string_view page, bool blnTwoPass) {
    const auto pass = [&](bool graphics, bool text) {
        run.state.blnGrafikAusgeben = graphics;
        run.state.blnTextAusgeben = text;
        interpreter.DoPage(page);
    };
    if (!blnTwoPass) {
        pass(true, true);
        return;
    }
    run.session.log.line(">       DoPage Phase 1, nur Grafiken ausgeben");
    pass(true, false);
    run.session.log.line(">       DoPage Phase 2, nur Text ausgeben");
    toPageStart(run);
    pass(false, true);
}

}  // namespace

void printPages(PrintRun& run, std::string_view printText, const std::string& sGrafikname, bool blnTwoPass) {
    session::DebugLog& log = run.session.log;
    log.line(">   Druckbeginn");
    PageCutter cutter(printText);
    PageInterpreter interpreter(run.session, run.printer, run.state, run.letEventsRun);
    Background background(run.session, run.pictures, sGrafikname);
    std::int16_t& intSeite = run.state.intSeite;
    std::optional<std::string_view> page = cutter.nextPage();
    selectTray(run.session, run.printer, cutter.requestedTray());
    while (page) {
        log.line(">     bearbeite Seite: ", std::to_string(intSeite));
        toPageStart(run);
        if (background.wanted()) {
            run.progress.during(Stretch::background, [&] { background.draw(run.printer); });
        }
        run.state.blnZeileBegonnen = false;
        log.line(">     DoPage bearbeitet Seite");
        run.progress.during(Stretch::page, [&] { printPage(run, interpreter, *page, blnTwoPass); });
        log.line(">     DoPage hat Seite bearbeitet");
        page = cutter.nextPage();
        if (page) {
            run.printer.NewPage();
            selectTray(run.session, run.printer, cutter.requestedTray());
            intSeite = runtime::addInteger(intSeite, 1);
        }
    }
}

}  // namespace report
