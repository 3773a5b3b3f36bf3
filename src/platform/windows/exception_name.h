// Exceptions of the system as people know them; a process that one has ended has its code as the exit code.
#pragma once

#include <windows.h>

#include <string_view>

namespace platform_windows {

// "Zugriffsverletzung"; empty for a code that is none of the known ones.
std::string_view exceptionName(DWORD code) noexcept;

}  // namespace platform_windows
