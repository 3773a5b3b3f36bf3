// The desktop's own list of printers.
#pragma once

#include <string>

namespace platform_linux {

// Opens the printer settings of the user's desktop or, where it has none, the web page of CUPS, and does not wait.
// Where there is neither, what to install; otherwise empty.
std::string openPrinterFolder();

}  // namespace platform_linux
