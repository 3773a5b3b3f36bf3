// Calls that may hang or end the process: made in another process that is given up after a while.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace platform_linux {

// The function's result; nothing where it threw, crashed, or was not done in time. What it writes to standard error is
// dropped; what it changes in memory is lost.
std::optional<int> forkedCall(const std::function<int()>& function, std::chrono::milliseconds limit);
std::optional<std::string> forkedText(const std::function<std::string()>& function, std::chrono::milliseconds limit);

// The same for a call that ends the process only where memory runs out: made here while there is plenty, since another
// process costs milliseconds.
std::optional<std::string> guardedText(const std::function<std::string()>& function, std::chrono::milliseconds limit);

// Makes the call and returns at once: nobody learns what becomes of it. The process holds no file, lock or folder of
// this one, outlives it if need be, and is ended at the limit. Where there can be none, the call is not made.
void detachedCall(const std::function<void()>& function, std::chrono::seconds limit);

}  // namespace platform_linux
