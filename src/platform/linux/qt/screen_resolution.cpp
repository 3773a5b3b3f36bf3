#include "platform/linux/qt/screen_resolution.h"

namespace platform_linux::qt {

platform::drawing::PixelsPerInch realResolution(const QScreen& screen) {
    const double ratio = screen.devicePixelRatio();
    return platform::drawing::likelyResolution(
        {screen.physicalDotsPerInchX() * ratio, screen.physicalDotsPerInchY() * ratio},
        {screen.logicalDotsPerInchX() * ratio, screen.logicalDotsPerInchY() * ratio});
}

}  // namespace platform_linux::qt
