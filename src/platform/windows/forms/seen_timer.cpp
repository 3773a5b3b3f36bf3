#include "platform/windows/forms/seen_timer.h"

#include <utility>

namespace platform_windows::forms {

namespace {

constexpr UINT_PTR number = 1;

bool isSeen(HWND window) { return ::IsWindowVisible(window) != FALSE && ::IsIconic(window) == FALSE; }

}  // namespace

void SeenTimer::start(HWND window, int milliseconds) {
    stop(window);
    milliseconds_ = milliseconds;
    rested_ = false;
    windowChanged(window);
}

void SeenTimer::windowChanged(HWND window) {
    if (milliseconds_ == 0 || isSeen(window) == running_) {
        return;
    }
    if (running_) {
        stop(window);
        rested_ = true;
    } else {
        run(window);
    }
}

void SeenTimer::run(HWND window) {
    running_ = ::SetTimer(window, number, static_cast<UINT>(milliseconds_), nullptr) != 0;
    if (std::exchange(rested_, false)) {
        ::PostMessageW(window, WM_TIMER, number, 0);
    }
}

void SeenTimer::stop(HWND window) {
    if (std::exchange(running_, false)) {
        ::KillTimer(window, number);
    }
}

}  // namespace platform_windows::forms
