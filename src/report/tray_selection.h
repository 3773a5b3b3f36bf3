// Maps the tray that a page asks for to a paper bin of the printer.
#pragma once

#include <string>

#include "printer/Printer.h"
#include "session/session.h"

namespace report {

// Sets the printer's bin for the coming page to the one that the user assigned to the tray "1" to "4". A tray without a
// bin, and any other text, leaves the bin as it is. An assignment that is no number is errTypeMismatch; a bin that the
// printer refuses is the printer's error.
void selectTray(session::Session& session, printer::Printer& printer, const std::string& requestedTray);

}  // namespace report
