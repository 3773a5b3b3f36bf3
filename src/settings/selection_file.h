// The selection file remembers the printer last confirmed in the printer selection, in the host's working directory.
#pragma once

#include <string>

#include "platform/system.h"

namespace settings {

// Replaces the file by one line, the printer's name. Errors of the file system are runtime::Error.
void writeSelectionFile(platform::System& system, const std::string& deviceName);

// The name read back: the first field of the first line, which ends at a comma too. Empty where there is no file or it
// cannot be read.
std::string readSelectionFile(platform::System& system);

}  // namespace settings
