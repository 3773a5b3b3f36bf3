#include "platform/linux/qt/screen_resolution.h"

#include <algorithm>

namespace platform_linux::qt {

namespace {

bool within(double factor, double one, double other) { return std::max(one, other) <= factor * std::min(one, other); }

bool canBe(const PixelsPerInch& real, const PixelsPerInch& taken, double ratio) {
    constexpr double least = 50;
    constexpr double most = 600;
    constexpr double oblong = 1.2;
    constexpr double mostScale = 2.5;
    return std::min(real.across, real.down) * ratio >= least && std::max(real.across, real.down) * ratio <= most &&
           within(oblong, real.across, real.down) && within(mostScale, real.across, taken.across) &&
           within(mostScale, real.down, taken.down);
}

}  // namespace

PixelsPerInch realResolution(const QScreen& screen) {
    const PixelsPerInch taken{screen.logicalDotsPerInchX(), screen.logicalDotsPerInchY()};
    if (screen.physicalSize().isEmpty()) {
        return taken;
    }
    const PixelsPerInch real{screen.physicalDotsPerInchX(), screen.physicalDotsPerInchY()};
    return canBe(real, taken, screen.devicePixelRatio()) ? real : taken;
}

}  // namespace platform_linux::qt
