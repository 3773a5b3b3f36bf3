// The system's dialogs for the name of a file to be written, or of one that is there.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <optional>
#include <string>

namespace platform_windows::forms {

// As Forms::askFileToWrite() and askFileToRead() say.
std::optional<std::string> chooseFileToWrite(HWND owner, const std::string& title, const std::string& suggestion,
                                             const std::string& kindOfFile, const std::string& ending);

std::optional<std::string> chooseFileToRead(HWND owner, const std::string& title, const std::string& folder);

}  // namespace platform_windows::forms
