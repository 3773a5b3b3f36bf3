// What the system and the language's run-time library call when something has happened that nobody traps.
#pragma once

namespace platform_linux::crash {

// Behind prepareReport(): from here on crashes of this process are reported. In children of the process, which are not
// the program, they end these as they always do.
void installHandlers() noexcept;

}  // namespace platform_linux::crash
