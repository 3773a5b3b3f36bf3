// Maps the tray that a page asks for to a paper bin of the printer.
#pragma once

#include <optional>
#include <string>

#include "printer/Printer.h"
#include "session/session.h"

namespace report {

// Sets the printer's bin for the coming page to the one that the user assigned to the tray "1" to "4". A tray without a
// bin, and any other text, leaves the bin as it is. An assignment that is no number is errTypeMismatch; for a bin that
// the printer does not have it is errInvalidPropertyValue, and the detail lists those that it has.
void selectTray(session::Session& session, printer::Printer& printer, const std::string& requestedTray);

// The same without a word in the log. Gives the bin that the printer then has; nothing where the tray has none.
std::optional<int> selectTraySilently(session::Session& session, printer::Printer& printer,
                                      const std::string& requestedTray);

}  // namespace report
