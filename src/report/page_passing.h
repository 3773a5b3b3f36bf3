// Runs through pages without printing them, so that any page can be printed alone as if all before it had been.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "printer/Printer.h"
#include "report/type_state.h"
#include "session/session.h"

namespace report {

// What the pages before a page leave to it.
struct PageStart {
    TypeState type;
    int orientation = 1;  // platform::PageOption's numbers
    int paperBin = 0;
    std::string tray;  // as requestTray() has it

    bool operator==(const PageStart&) const = default;
};

class PagePassing {
public:
    // Both are borrowed. No page of the printer is begun. With blnTwoPass pages are run through twice, as they are
    // printed.
    PagePassing(session::Session& session, printer::Printer& printer, bool blnTwoPass)
        : session_(session), printer_(printer), blnTwoPass_(blnTwoPass) {}

    // How the first page begins on the printer prepared, whose type state this is.
    PageStart firstPage(const TypeState& type);

    // Goes on to where the page behind this one begins. What would end a job is passed over: a bin that the printer
    // does not take changes nothing. Leaves the printer with another bin, it may be.
    void pass(std::string_view page, PageStart& start);

private:
    int binFor(const std::string& tray, int binSoFar);

    session::Session& session_;
    printer::Printer& printer_;
    const bool blnTwoPass_;
    std::map<std::string, std::optional<int>> bins_;  // by tray; nothing where it leaves the bin as it is
};

}  // namespace report
