#include "platform/windows/windows_profile.h"

#include <windows.h>

#include <array>

#include "platform/windows/files.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"

namespace platform_windows {

std::string WindowsProfile::text(std::string_view section, std::string_view key, std::string_view fallback) {
    std::array<wchar_t, 255> value{};
    const DWORD length = ::GetPrivateProfileStringW(widen(section).c_str(), widen(key).c_str(), widen(fallback).c_str(),
                                                    value.data(), static_cast<DWORD>(value.size()), path_.c_str());
    return narrow({value.data(), length});
}

std::string WindowsProfile::failure() {
    std::string content;
    const DWORD error = readWholeFile(path_, content);
    const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return error == 0 || missing ? std::string() : shownPath(path_) + " (" + systemMessage(error) + ")";
}

}  // namespace platform_windows
