// What the log says of the page that a job is printed on.
#pragma once

#include "printer/Printer.h"
#include "session/session.h"

namespace report {

// Margins, resolution, printable area and size of the sheet. "Pixel pro mm" are pixels per inch, which support staff
// know. A device without a resolution is errDivisionByZero.
void logPrinterGeometry(session::Session& session, printer::Printer& printer);

}  // namespace report
