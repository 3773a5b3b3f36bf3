// The log of error reports as a file.
#pragma once

#include <string_view>

#include "platform/windows/crash/kernel_file.h"

namespace platform_windows::crash {

// Appends an entry, whole or not at all; where the log would grow too long, its older entries go. Makes the log's
// folder where it is missing. A system error code.
DWORD appendEntry(const KernelPath& log, std::string_view entry) noexcept;

}  // namespace platform_windows::crash
