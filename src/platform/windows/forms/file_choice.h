// The system's dialog for the name of a file to be written.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <optional>
#include <string>

namespace platform_windows::forms {

// As Forms::askFileToWrite() says.
std::optional<std::string> chooseFileToWrite(HWND owner, const std::string& title, const std::string& suggestion,
                                             const std::string& kindOfFile, const std::string& ending);

}  // namespace platform_windows::forms
