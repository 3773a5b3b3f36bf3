// What printed documents say of themselves, for the log.
#pragma once

#include "printer/Printer.h"
#include "session/session.h"

namespace printer {

// A line of the log for each.
void logRemarks(session::Session& session, const Printer& printer);

}  // namespace printer
