#include "report/page_printer.h"

#include <limits>

#include "runtime/error.h"

namespace report {

std::int16_t pageNumber(std::size_t number) {
    constexpr std::int16_t most = std::numeric_limits<std::int16_t>::max();
    if (number > most) {
        throw runtime::Error(runtime::errOverflow, "ein Druckauftrag endet hinter Seite " + std::to_string(most));
    }
    return static_cast<std::int16_t>(number);
}

PagePrinter::PagePrinter(PrintRun& run, const std::string& sGrafikname, bool blnTwoPass)
    : run_(run),
      blnTwoPass_(blnTwoPass),
      background_(run.session, run.pictures, sGrafikname),
      interpreter_(run.session, run.printer, run.state, run.letEventsRun) {
    interpreter_.listener(run.listener);
}

void PagePrinter::continueFrom(const PageStart& start) {
    using platform::PageOption;
    run_.state.type = start.type;
    for (const auto& [option, value] :
         {std::pair(PageOption::orientation, start.orientation), std::pair(PageOption::paperBin, start.paperBin)}) {
        if (run_.printer.Option(option) != value) {
            run_.printer.Option(option, value);
        }
    }
}

void PagePrinter::begin() {
    toPageStart();
    if (background_.wanted()) {
        run_.progress.during(Stretch::background, [this] { background_.draw(run_.printer); });
    }
    run_.state.blnZeileBegonnen = false;
}

void PagePrinter::print(std::string_view page) {
    run_.progress.during(Stretch::page, [&] {
        if (blnTwoPass_) {
            run_.session.log.line(">       DoPage Phase 1, nur Grafiken ausgeben");
            pass(page, true, false);
            run_.session.log.line(">       DoPage Phase 2, nur Text ausgeben");
            toPageStart();
        }
        pass(page, !blnTwoPass_, true);
        // A page without text is one as well.
        run_.letEventsRun();
    });
}

void PagePrinter::toPageStart() {
    run_.printer.CurrentY(run_.state.settings.lngKopfabstand);
    run_.printer.CurrentX(run_.state.settings.lngLinkerRand);
}

void PagePrinter::pass(std::string_view page, bool graphics, bool text) {
    run_.state.blnGrafikAusgeben = graphics;
    run_.state.blnTextAusgeben = text;
    interpreter_.DoPage(page);
}

}  // namespace report
