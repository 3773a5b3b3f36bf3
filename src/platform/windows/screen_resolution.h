// The resolution of the user's screen.
#pragma once

#include "platform/drawing/likely_resolution.h"

namespace platform_windows {

// Pixels per inch of a screen that nobody has set to another scale.
inline constexpr int usualDpi = 96;

// Pixels per inch, across (LOGPIXELSX) or down (LOGPIXELSY); the usual ones where the system does not tell.
int screenResolution(int index);

// Of the real screen where it can be known.
platform::drawing::PixelsPerInch realResolution();

}  // namespace platform_windows
