// Calls that may hang or end the process: made in a child process that is given up after a while.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

namespace platform_linux {

// The function's result; nothing where it threw, crashed, or was not done in time. What it writes to standard error is
// dropped; what it changes in memory is lost.
std::optional<int> forkedCall(const std::function<int()>& function, std::chrono::milliseconds limit);

}  // namespace platform_linux
