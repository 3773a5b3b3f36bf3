// The program once more, as a process of its own that offers the report.
#pragma once

namespace platform_linux::crash {

// In the environment of that process: it is to offer the newest report that nobody has seen.
inline constexpr const char* offerVariable = "KRVWINPR_ERROR_REPORT";

// Starts it, without arguments, and does not wait for it. It holds no file of this one.
void startSecondProcess() noexcept;

}  // namespace platform_linux::crash
