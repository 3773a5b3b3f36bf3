// The window that boxes and dialogs of the system belong to.
#pragma once

#include <windows.h>

namespace platform_windows {

// The topmost of this thread's windows that the user sees and can use: the program's form that was opened last, or a
// box that lies over it. Null where none is open. What belongs to a window lies above it, and lets nothing be done in
// it before it is closed itself.
HWND topmostWindow() noexcept;

}  // namespace platform_windows
