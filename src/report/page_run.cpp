#include <cstdint>
#include <optional>

#include "report/page_cutter.h"
#include "report/page_printer.h"
#include "report/tray_selection.h"
#include "runtime/numbers.h"

namespace report {

void printPages(PrintRun& run, std::string_view printText, const std::string& sGrafikname, bool blnTwoPass) {
    session::DebugLog& log = run.session.log;
    platform::Activity& activity = run.session.activity();
    log.line(">   Druckbeginn");
    PageCutter cutter(printText);
    PagePrinter pages(run, sGrafikname, blnTwoPass);
    std::string tray;
    const auto cutPage = [&] {
        const std::optional<std::string_view> page = cutter.nextPage();
        requestTray(page.value_or(""), tray);
        return page;
    };
    std::int16_t& intSeite = run.state.intSeite;
    std::optional<std::string_view> page = cutPage();
    selectTray(run.session, run.printer, tray);
    while (page) {
        activity.page.store(static_cast<std::uint32_t>(intSeite), std::memory_order_relaxed);
        run.state.pageOffset = static_cast<std::size_t>(page->data() - printText.data());
        log.line(">     bearbeite Seite: ", std::to_string(intSeite));
        pages.begin();
        log.line(">     DoPage bearbeitet Seite");
        pages.print(*page);
        log.line(">     DoPage hat Seite bearbeitet");
        page = cutPage();
        if (page) {
            run.printer.NewPage();
            selectTray(run.session, run.printer, tray);
            intSeite = runtime::addInteger(intSeite, 1);
        }
    }
}

}  // namespace report
