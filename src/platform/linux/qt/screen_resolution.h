// The resolution of the user's screen.
#pragma once

#include <QScreen>

namespace platform_linux::qt {

struct PixelsPerInch {
    double across = 96;
    double down = 96;
};

// Of the real screen, in Qt's own pixels, as it says of its size. Many say nothing, or something else (a projector, a
// remote screen): where that cannot be, what the desktop takes for it.
PixelsPerInch realResolution(const QScreen& screen);

}  // namespace platform_linux::qt
