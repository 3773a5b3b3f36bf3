#include "platform/windows/screen_resolution.h"

#include "platform/windows/handle.h"

namespace platform_windows {

int screenResolution(int index) {
    const ScreenContext screen(::GetDC(nullptr));
    const int dpi = screen ? ::GetDeviceCaps(screen.get(), index) : 0;
    return dpi > 0 ? dpi : usualDpi;
}

platform::drawing::PixelsPerInch realResolution() {
    constexpr double millimetresPerInch = 25.4;
    const ScreenContext screen(::GetDC(nullptr));
    const auto measured = [&](int pixels, int millimetres) {
        return millimetresPerInch * ::GetDeviceCaps(screen.get(), pixels) / ::GetDeviceCaps(screen.get(), millimetres);
    };
    return platform::drawing::likelyResolution(
        {.across = measured(HORZRES, HORZSIZE), .down = measured(VERTRES, VERTSIZE)},
        {.across = double(screenResolution(LOGPIXELSX)), .down = double(screenResolution(LOGPIXELSY))});
}

}  // namespace platform_windows
