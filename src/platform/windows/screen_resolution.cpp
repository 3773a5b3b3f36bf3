#include "platform/windows/screen_resolution.h"

#include "platform/windows/handle.h"

namespace platform_windows {

int screenResolution(int index) {
    const ScreenContext screen(::GetDC(nullptr));
    const int dpi = screen ? ::GetDeviceCaps(screen.get(), index) : 0;
    return dpi > 0 ? dpi : usualDpi;
}

}  // namespace platform_windows
