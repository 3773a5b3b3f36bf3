// The resolution of the user's screen.
#pragma once

namespace platform_windows {

// Pixels per inch of a screen that nobody has set to another scale.
inline constexpr int usualDpi = 96;

// Pixels per inch, across (LOGPIXELSX) or down (LOGPIXELSY); the usual ones where the system does not tell.
int screenResolution(int index);

struct PixelsPerInch {
    double across = usualDpi;
    double down = usualDpi;
};

// Of the real screen, as it says of its size. Many say nothing, or something else (a projector, a remote screen, a
// driver that knows none): where that cannot be, what the system takes for it.
PixelsPerInch realResolution();
PixelsPerInch likelyResolution(const PixelsPerInch& real, const PixelsPerInch& taken);

}  // namespace platform_windows
