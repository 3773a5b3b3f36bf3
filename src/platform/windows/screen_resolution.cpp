#include "platform/windows/screen_resolution.h"

#include "platform/windows/handle.h"

namespace platform_windows {

int screenResolution(int index) {
    const ScreenContext screen(::GetDC(nullptr));
    const int dpi = screen ? ::GetDeviceCaps(screen.get(), index) : 0;
    return dpi > 0 ? dpi : usualDpi;
}

PixelsPerInch realResolution() {
    constexpr double millimetresPerInch = 25.4;
    const ScreenContext screen(::GetDC(nullptr));
    const auto measured = [&](int pixels, int millimetres) {
        return millimetresPerInch * ::GetDeviceCaps(screen.get(), pixels) / ::GetDeviceCaps(screen.get(), millimetres);
    };
    return likelyResolution(
        {.across = measured(HORZRES, HORZSIZE), .down = measured(VERTRES, VERTSIZE)},
        {.across = double(screenResolution(LOGPIXELSX)), .down = double(screenResolution(LOGPIXELSY))});
}

PixelsPerInch likelyResolution(const PixelsPerInch& real, const PixelsPerInch& taken) {
    constexpr double coarsest = 50;
    constexpr double finest = 600;
    constexpr double squareEnough = 1.2;
    constexpr double closeEnough = 2.5;
    const auto isWithin = [](double value, double least, double most) { return value >= least && value <= most; };
    const bool isLikely = isWithin(real.across, coarsest, finest) && isWithin(real.down, coarsest, finest) &&
                          isWithin(real.across / real.down, 1 / squareEnough, squareEnough) &&
                          isWithin(real.across / taken.across, 1 / closeEnough, closeEnough);
    return isLikely ? real : taken;
}

}  // namespace platform_windows
