#include "platform/windows/forms/form_frame.h"

#include <algorithm>

#include "platform/windows/screen_resolution.h"

namespace platform_windows::forms {

namespace {

MONITORINFO infoOf(HMONITOR monitor) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    ::GetMonitorInfoW(monitor, &info);
    return info;
}

MONITORINFO screenOf(HWND window) { return infoOf(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST)); }

SIZE sizeOf(const RECT& area) { return {area.right - area.left, area.bottom - area.top}; }

// One that can be made smaller does not reach beyond the screen.
SIZE fitting(HWND form, const RECT& room, SIZE size) {
    if ((::GetWindowLongW(form, GWL_STYLE) & WS_THICKFRAME) == 0) {
        return size;
    }
    const SIZE most = sizeOf(room);
    return {std::min(size.cx, most.cx), std::min(size.cy, most.cy)};
}

// One that can grow has most of the screen, so that much is to be seen in it.
SIZE readingSize(HWND form, const RECT& room, SIZE designed) {
    constexpr int percent = 85;
    if ((::GetWindowLongW(form, GWL_STYLE) & WS_THICKFRAME) == 0) {
        return designed;
    }
    const SIZE whole = sizeOf(room);
    return {std::max(designed.cx, whole.cx * percent / 100), std::max(designed.cy, whole.cy * percent / 100)};
}

void moveOnto(HWND form, const RECT& room, LONG left, LONG top, SIZE wanted) {
    const SIZE size = fitting(form, room, wanted);
    left = std::max(room.left, std::min(left, room.right - size.cx));
    top = std::max(room.top, std::min(top, room.bottom - size.cy));
    ::SetWindowPos(form, nullptr, left, top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

SIZE frameSize(HWND form) {
    RECT frame{};
    ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongW(form, GWL_STYLE)), FALSE,
                         static_cast<DWORD>(::GetWindowLongW(form, GWL_EXSTYLE)));
    return sizeOf(frame);
}

RECT roomOfScreen(HWND window) { return screenOf(window).rcWork; }

int frameHeight(HWND form, platform::FormHeight height, int fontPixels) {
    constexpr int twipsToThePixel = 15;
    constexpr int usualFontPixels = 12;
    const int pixels = height.twips / twipsToThePixel;
    RECT visible{0, 0, 0, height.visible};
    ::MapDialogRect(form, &visible);
    return std::max({::MulDiv(pixels, screenResolution(LOGPIXELSY), usualDpi),
                     ::MulDiv(pixels, fontPixels, usualFontPixels),
                     static_cast<int>(visible.bottom + frameSize(form).cy)});
}

void setFrameHeight(HWND form, int height) {
    RECT now{};
    ::GetWindowRect(form, &now);
    moveOnto(form, roomOfScreen(form), now.left, now.top, {sizeOf(now).cx, height});
}

void centre(HWND form) {
    const HWND owner = ::GetWindow(form, GW_OWNER);
    const HWND host = owner != nullptr ? owner : ::GetForegroundWindow();
    const RECT room = roomOfScreen(host != nullptr ? host : form);
    RECT around = room;
    if (owner != nullptr) {
        ::GetWindowRect(owner, &around);
    }
    RECT now{};
    ::GetWindowRect(form, &now);
    const SIZE size = fitting(form, room, readingSize(form, room, sizeOf(now)));
    moveOnto(form, room, (around.left + around.right - size.cx) / 2, (around.top + around.bottom - size.cy) / 2, size);
}

platform::WindowPlace placeOf(HWND form) {
    WINDOWPLACEMENT now{};
    now.length = sizeof now;
    ::GetWindowPlacement(form, &now);
    const SIZE size = sizeOf(now.rcNormalPosition);
    const SIZE frame = frameSize(form);
    // The system counts from where the taskbar leaves room.
    const MONITORINFO screen = screenOf(form);
    return {.x = static_cast<int>(now.rcNormalPosition.left + screen.rcWork.left - screen.rcMonitor.left),
            .y = static_cast<int>(now.rcNormalPosition.top + screen.rcWork.top - screen.rcMonitor.top),
            .width = static_cast<int>(size.cx - frame.cx),
            .height = static_cast<int>(size.cy - frame.cy),
            .maximized = now.showCmd == SW_SHOWMAXIMIZED ||
                         (now.showCmd == SW_SHOWMINIMIZED && (now.flags & WPF_RESTORETOMAXIMIZED) != 0)};
}

void moveTo(HWND form, const platform::WindowPlace& place, SIZE least) {
    // What was stored may be anything.
    constexpr int most = 30000;
    const auto bounded = [=](int value) { return LONG{std::clamp(value, -most, most)}; };
    const SIZE frame = frameSize(form);
    const SIZE size{std::max(bounded(place.width) + frame.cx, least.cx),
                    std::max(bounded(place.height) + frame.cy, least.cy)};
    const LONG left = bounded(place.x);
    const LONG top = bounded(place.y);
    const RECT area{left, top, left + size.cx, top + size.cy};
    moveOnto(form, infoOf(::MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST)).rcWork, left, top, size);
}

}  // namespace platform_windows::forms
