// The resolution of the user's screen.
#pragma once

namespace platform_windows {

// Pixels per inch of a screen that nobody has set to another scale.
inline constexpr int usualDpi = 96;

// Pixels per inch, across (LOGPIXELSX) or down (LOGPIXELSY); the usual ones where the system does not tell.
int screenResolution(int index);

}  // namespace platform_windows
