// The resolution of the user's screen.
#pragma once

#include <QScreen>

#include "platform/drawing/likely_resolution.h"

namespace platform_linux::qt {

// Of the real screen where it can be known, in its own pixels, not in Qt's.
platform::drawing::PixelsPerInch realResolution(const QScreen& screen);

}  // namespace platform_linux::qt
