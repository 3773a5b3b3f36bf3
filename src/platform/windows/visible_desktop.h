// Whether anybody sees what the program shows.
#pragma once

namespace platform_windows {

// False in a service and in a task that runs without a user: windows of the system would wait there for ever.
bool hasVisibleDesktop() noexcept;

}  // namespace platform_windows
