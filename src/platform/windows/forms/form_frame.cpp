#include "platform/windows/forms/form_frame.h"

#include <algorithm>

#include "platform/windows/screen_resolution.h"

namespace platform_windows::forms {

namespace {

// Without the taskbar.
RECT roomOfScreen(HWND window) {
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
    return screen.rcWork;
}

void moveOnto(HWND form, const RECT& room, LONG left, LONG top, LONG width, LONG height) {
    left = std::max(room.left, std::min(left, room.right - width));
    top = std::max(room.top, std::min(top, room.bottom - height));
    ::SetWindowPos(form, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

int frameHeight(HWND form, platform::FormHeight height, int fontPixels) {
    constexpr int twipsToThePixel = 15;
    constexpr int usualFontPixels = 12;
    const int pixels = height.twips / twipsToThePixel;
    RECT visible{0, 0, 0, height.visible};
    ::MapDialogRect(form, &visible);
    ::AdjustWindowRectEx(&visible, static_cast<DWORD>(::GetWindowLongW(form, GWL_STYLE)), FALSE,
                         static_cast<DWORD>(::GetWindowLongW(form, GWL_EXSTYLE)));
    return std::max({::MulDiv(pixels, screenResolution(LOGPIXELSY), usualDpi),
                     ::MulDiv(pixels, fontPixels, usualFontPixels), static_cast<int>(visible.bottom - visible.top)});
}

void setFrameHeight(HWND form, int height) {
    RECT now{};
    ::GetWindowRect(form, &now);
    moveOnto(form, roomOfScreen(form), now.left, now.top, now.right - now.left, height);
}

void centre(HWND form) {
    const HWND host = ::GetForegroundWindow();
    const RECT room = roomOfScreen(host != nullptr ? host : form);
    RECT now{};
    ::GetWindowRect(form, &now);
    const LONG width = now.right - now.left;
    const LONG height = now.bottom - now.top;
    moveOnto(form, room, (room.left + room.right - width) / 2, (room.top + room.bottom - height) / 2, width, height);
}

}  // namespace platform_windows::forms
