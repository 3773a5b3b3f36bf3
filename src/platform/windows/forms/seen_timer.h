// A timer that rests while its window is not to be seen.
#pragma once

#include "platform/windows/gdi/system_headers.h"

namespace platform_windows::forms {

// The window is sent WM_TIMER every so many milliseconds while it is neither hidden nor minimised, and once as soon as
// it is to be seen again.
class SeenTimer {
public:
    // 0 for never.
    void start(HWND window, int milliseconds);

    // The window may have been shown, hidden or minimised.
    void windowChanged(HWND window);

    bool isRunning() const noexcept { return running_; }

private:
    void run(HWND window);
    void stop(HWND window);

    int milliseconds_ = 0;
    bool running_ = false;
    bool rested_ = false;
};

}  // namespace platform_windows::forms
