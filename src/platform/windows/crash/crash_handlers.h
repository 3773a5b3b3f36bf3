// What the system and the language's run-time library call when something has happened that nobody traps.
#pragma once

namespace platform_windows::crash {

// Behind prepareReport(): from here on crashes are reported, and no box of the system is shown for them.
void installHandlers() noexcept;

}  // namespace platform_windows::crash
