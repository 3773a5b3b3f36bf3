#include "platform/windows/forms/tool_button.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/drawing/symbol_pixels.h"
#include "platform/windows/forms/kept_pointer.h"
#include "platform/windows/forms/pixel_buffer.h"
#include "platform/windows/forms/tool_look.h"
#include "platform/windows/screen_resolution.h"

namespace platform_windows::forms {

namespace {

RECT roomOf(HWND window) {
    RECT room{};
    ::GetClientRect(window, &room);
    return room;
}

int symbolSize(HWND window) {
    constexpr int usual = 16;
    const RECT room = roomOf(window);
    return std::min<int>({::MulDiv(usual, screenResolution(LOGPIXELSX), usualDpi), room.right, room.bottom});
}

std::uint32_t systemPixel(int index) {
    const DWORD color = ::GetSysColor(index);
    return platform::drawing::pixelOf({.red = GetRValue(color), .green = GetGValue(color), .blue = GetBValue(color)});
}

}  // namespace

ToolButton::ToolButton(HWND window, const platform::Symbol& symbol)
    : window_(window),
      next_(keptPointer<WNDPROC>(::GetWindowLongPtrW(window, GWLP_WNDPROC))),
      size_(symbolSize(window)),
      opacity_(platform::drawing::symbolPixels(symbol, size_)) {
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(handle));
}

LRESULT CALLBACK ToolButton::handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    auto* const tool = keptPointer<ToolButton*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    return tool->take(message, first, second) ? 0 : ::CallWindowProcW(tool->next_, window, message, first, second);
}

bool ToolButton::take(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            press();
            return true;
        case WM_LBUTTONUP:
            if (held_) {
                ::ReleaseCapture();
                if (isOver(second)) {
                    click();
                }
            }
            return true;
        case WM_CAPTURECHANGED:
            held_ = false;
            redraw();
            return true;
        case WM_MOUSEMOVE:
            hover(second);
            return false;
        case WM_MOUSELEAVE:
            hot_ = false;
            redraw();
            return false;
        case BM_CLICK:  // screen readers
            click();
            return true;
        case WM_SETFOCUS:
            ::SetFocus(reinterpret_cast<HWND>(first));  // NOLINT(performance-no-int-to-ptr): a message's word
            return true;
        case WM_ENABLE:
            hot_ = false;
            redraw();
            return false;
        case WM_ERASEBKGND:
            return true;
        default:
            return false;
    }
}

bool ToolButton::isOver(LPARAM place) const {
    const RECT room = roomOf(window_);
    const POINT at{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    return at.x >= 0 && at.y >= 0 && at.x < room.right && at.y < room.bottom;
}

void ToolButton::hover(LPARAM place) {
    const bool hot = isOver(place);
    if (hot == hot_) {
        return;
    }
    hot_ = hot;
    redraw();
    TRACKMOUSEEVENT leaving{};
    leaving.cbSize = sizeof leaving;
    leaving.dwFlags = TME_LEAVE;
    leaving.hwndTrack = window_;
    ::TrackMouseEvent(&leaving);
}

void ToolButton::press() {
    ::SetCapture(window_);
    held_ = true;
    hot_ = true;
    redraw();
}

void ToolButton::click() const {
    const WPARAM what = MAKEWPARAM(::GetDlgCtrlID(window_), BN_CLICKED);
    ::PostMessageW(::GetParent(window_), WM_COMMAND, what, reinterpret_cast<LPARAM>(window_));
}

void ToolButton::draw(HDC screen) const {
    const RECT room = roomOf(window_);
    const PixelBuffer pixels(room.right, room.bottom);
    if (!pixels) {
        return;
    }
    const bool enabled = ::IsWindowEnabled(window_) != FALSE;
    ::FillRect(pixels.context(), &room, ::GetSysColorBrush(COLOR_BTNFACE));
    if (enabled && hot_) {
        drawToolFrame(window_, pixels.context(), room, held_);
    }
    const std::uint32_t color = systemPixel(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    const int left = (pixels.width() - size_) / 2;
    const int top = (pixels.height() - size_) / 2;
    const platform::drawing::ScreenPixels bits = pixels.pixels();
    auto opacity = opacity_.begin();
    for (int y = top; y < top + size_; ++y, opacity += size_) {
        std::uint32_t* const row = bits.row(y) + left;
        std::transform(opacity, opacity + size_, row, row, [color](std::uint8_t strength, std::uint32_t below) {
            return platform::drawing::mixed(below, color, platform::drawing::shareOf(strength));
        });
    }
    pixels.copyTo(screen, 0, 0);
}

}  // namespace platform_windows::forms
