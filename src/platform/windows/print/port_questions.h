// Ports that ask the user where to print to.
#pragma once

#include <string>
#include <string_view>

namespace platform_windows::print {

// Of a printer's ports ("LPT1:,FILE:"), the first one that asks the user for a file or a number whenever a document
// begins; empty where none does.
std::string askingPort(std::string_view ports);

}  // namespace platform_windows::print
