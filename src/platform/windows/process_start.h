// What every program of ours does before anything else.
#pragma once

namespace platform_windows {

void beginProcess() noexcept;

}  // namespace platform_windows
