// The resolution of the user's screen.
#pragma once

namespace platform::drawing {

struct PixelsPerInch {
    double across = 96;
    double down = 96;
};

// Of the real screen, as it says of its size. Many say nothing (a length without an end, or no number), or something
// else (a projector, a remote screen, a driver that knows none): where that cannot be, what the system takes for it.
PixelsPerInch likelyResolution(const PixelsPerInch& real, const PixelsPerInch& taken);

}  // namespace platform::drawing
