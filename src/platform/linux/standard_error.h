// Text on standard error.
#pragma once

#include <string_view>

namespace platform_linux {

// Gives up rather than wait for a reader that does not read, and does not end the process where that has gone away.
void writeToStandardError(std::string_view text, int patienceMilliseconds = 1000) noexcept;

}  // namespace platform_linux
