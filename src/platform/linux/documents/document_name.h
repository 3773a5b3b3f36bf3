// Names made from a document's title.
#pragma once

#include <string>

namespace platform_linux::documents {

// "RECHNUNG" of "d:\auftrag\RECHNUNG.TXT": the title without its drive and folder ("/" and "\" both
// separate) and its last
// ending, as a file can be called it; never empty, and short enough for an ending and a number behind it.
std::string documentName(const std::string& title);

// "RECHNUNG.pdf", "RECHNUNG (2).pdf", "RECHNUNG (3).pdf"; number from 1.
std::string numberedName(const std::string& name, int number);

}  // namespace platform_linux::documents
