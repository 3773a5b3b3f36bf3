// What the spooler says of one printer. Every function throws platform::SpoolerError where there is no printer of that
// name (UTF-8) or the spooler does not answer.
#pragma once

#include <string>
#include <vector>

#include "platform/spooler.h"
#include "platform/windows/print/print_handles.h"

namespace platform_windows::print {

// Rights: PRINTER_ACCESS_USE or PRINTER_ACCESS_ADMINISTER.
PrinterHandle openPrinter(const std::string& name, ACCESS_MASK rights = PRINTER_ACCESS_USE);

platform::PrinterRecord printerRecord(const std::string& name);

// In the driver's order; empty where the driver names none.
std::vector<platform::PaperBin> paperBins(const std::string& name);

}  // namespace platform_windows::print
