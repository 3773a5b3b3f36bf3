// Standard error, which is there where whoever started the program has asked for it.
#pragma once

#include <string_view>

namespace platform_windows {

// Bytes as they are. Nothing is waited for: what a pipe does not take at once is lost. Allocates nothing.
void writeToStandardError(std::string_view bytes) noexcept;

}  // namespace platform_windows
