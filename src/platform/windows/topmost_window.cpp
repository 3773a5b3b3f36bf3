#include "platform/windows/topmost_window.h"

namespace platform_windows {

namespace {

bool isOurs(HWND window) {
    return ::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId() &&
           ::IsWindowVisible(window) != FALSE && ::IsWindowEnabled(window) != FALSE;
}

}  // namespace

HWND topmostWindow() noexcept {
    // Windows may come and go meanwhile; then the system's order of them may begin again, so there is a limit.
    constexpr int mostWindows = 10000;
    HWND window = ::GetTopWindow(nullptr);
    for (int count = 0; window != nullptr && count < mostWindows; ++count) {
        if (isOurs(window)) {
            return window;
        }
        window = ::GetWindow(window, GW_HWNDNEXT);
    }
    return nullptr;
}

}  // namespace platform_windows
