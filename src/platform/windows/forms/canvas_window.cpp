#include "platform/windows/forms/canvas_window.h"

#include <utility>

#include "platform/windows/forms/kept_pointer.h"
#include "platform/windows/forms/screen_canvas.h"
#include "platform/windows/forms/scroll_bars.h"
#include "platform/windows/screen_resolution.h"

namespace platform_windows::forms {

namespace {

using platform::PointerAction;
using platform::PointerButton;

constexpr UINT tellSize = WM_APP;
// Timers, for when the program has done its work.
constexpr UINT_PTR paintLater = 1;
constexpr UINT_PTR tellLater = 2;
constexpr UINT pause = 30;  // milliseconds

// The words are signed where screens lie to the left of the first one.
POINT pointOf(LPARAM place) { return {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))}; }

HCURSOR systemCursor(platform::Cursor cursor) {
    const auto nameOf = [cursor] {
        switch (cursor) {
            case platform::Cursor::text:
                return IDC_IBEAM;
            case platform::Cursor::hand:
                return IDC_HAND;
            case platform::Cursor::grabbing:
                return IDC_SIZEALL;
            case platform::Cursor::wait:
                return IDC_WAIT;
            default:
                return IDC_ARROW;
        }
    };
    return ::LoadCursorW(nullptr, nameOf());
}

}  // namespace

const wchar_t* CanvasWindow::windowClass() {
    static const wchar_t* const name = [] {
        WNDCLASSW kind{};
        kind.style = CS_DBLCLKS;
        kind.lpfnWndProc = handle;
        kind.hInstance = ::GetModuleHandleW(nullptr);
        kind.lpszClassName = L"KRVWinPr.Canvas";
        ::RegisterClassW(&kind);
        return kind.lpszClassName;
    }();
    return name;
}

CanvasWindow::CanvasWindow(HWND window, const std::string& name, EventTeller& teller)
    : window_(window), name_(name), teller_(teller), cursor_(systemCursor(platform::Cursor::arrow)) {
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

LRESULT CALLBACK CanvasWindow::handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    auto* const canvas = keptPointer<CanvasWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    return canvas != nullptr ? canvas->answer(message, first, second)
                             : ::DefWindowProcW(window, message, first, second);
}

LRESULT CanvasWindow::answer(UINT message, WPARAM first, LPARAM second) noexcept {
    if (answerMouse(message, first, second)) {
        return 0;
    }
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            paint();
            return 0;
        case WM_SIZE:
            sized();
            return 0;
        case tellSize:
            tellResized();
            return 0;
        case WM_TIMER:
            ::KillTimer(window_, first);
            if (first == paintLater) {
                ::InvalidateRect(window_, nullptr, FALSE);
            } else {
                announceSize();
            }
            return 0;
        case WM_GETDLGCODE:
            // A letter is no access key while it has the focus, and makes no noise.
            return DLGC_WANTARROWS | DLGC_WANTCHARS;
        case WM_HSCROLL:
            scroll(SB_HORZ, LOWORD(first));
            return 0;
        case WM_VSCROLL:
            scroll(SB_VERT, LOWORD(first));
            return 0;
        case WM_SETCURSOR:
            if (LOWORD(second) == HTCLIENT) {
                ::SetCursor(cursor_);
                return TRUE;
            }
            break;
        default:
            break;
    }
    return ::DefWindowProcW(window_, message, first, second);
}

bool CanvasWindow::answerMouse(UINT message, WPARAM first, LPARAM second) noexcept {
    switch (message) {
        case WM_MOUSEMOVE:
            point(PointerAction::moved, held_, second);
            return true;
        case WM_LBUTTONDOWN:
            press(PointerAction::pressed, PointerButton::left, second);
            return true;
        case WM_MBUTTONDOWN:
            press(PointerAction::pressed, PointerButton::middle, second);
            return true;
        case WM_LBUTTONDBLCLK:
            press(PointerAction::doubleClicked, PointerButton::left, second);
            return true;
        case WM_MBUTTONDBLCLK:
            press(PointerAction::doubleClicked, PointerButton::middle, second);
            return true;
        case WM_LBUTTONUP:
        case WM_MBUTTONUP:
            if (held_ == (message == WM_LBUTTONUP ? PointerButton::left : PointerButton::middle)) {
                lastPlace_ = second;
                ::ReleaseCapture();
            }
            return true;
        case WM_CAPTURECHANGED:
            release();
            return true;
        case WM_MOUSEWHEEL:
        case wheelAcross:
            wheel(message == wheelAcross, first);
            return true;
        default:
            return false;
    }
}

platform::CanvasSize CanvasWindow::size() const {
    RECT room{};
    ::GetClientRect(window_, &room);
    const platform::drawing::PixelsPerInch real = realResolution();
    return {.width = room.right,
            .height = room.bottom,
            .pixelsPerInchX = real.across,
            .pixelsPerInchY = real.down,
            .scale = double(screenResolution(LOGPIXELSX)) / usualDpi};
}

void CanvasWindow::invalidate() {
    stale_ = true;
    ::InvalidateRect(window_, nullptr, FALSE);
}

void CanvasWindow::setScrollBars(const platform::ScrollBar& across, const platform::ScrollBar& down) {
    setScrollBar(window_, SB_HORZ, across);
    setScrollBar(window_, SB_VERT, down);
}

void CanvasWindow::setCursor(platform::Cursor cursor) {
    cursor_ = systemCursor(cursor);
    POINT place{};
    ::GetCursorPos(&place);
    if (::GetCapture() == window_ || ::WindowFromPoint(place) == window_) {
        ::SetCursor(cursor_);
    }
}

void CanvasWindow::announceSize() { ::PostMessageW(window_, tellSize, 0, 0); }

void CanvasWindow::sized() noexcept {
    invalidate();
    // A call of the program may be the reason, of which no event comes before it is over.
    announceSize();
}

void CanvasWindow::tellResized() noexcept {
    if (!teller_.tell([this](platform::FormEvents& events) { events.resized(name_); })) {
        ::SetTimer(window_, tellLater, pause, nullptr);
    }
}

void CanvasWindow::paint() noexcept {
    PAINTSTRUCT area{};
    const HDC screen = ::BeginPaint(window_, &area);
    paintAnew();
    RECT room{};
    ::GetClientRect(window_, &room);
    if (pixels_.width() < room.right || pixels_.height() < room.bottom) {
        ::FillRect(screen, &room, ::GetSysColorBrush(COLOR_APPWORKSPACE));
    }
    pixels_.copyTo(screen, 0, 0);
    ::EndPaint(window_, &area);
}

void CanvasWindow::paintAnew() noexcept {
    const platform::CanvasSize now = size();
    if (!std::exchange(stale_, false) || now.width == 0 || now.height == 0) {
        return;
    }
    const bool told = teller_.tell([&](platform::FormEvents& events) {
        if (pixels_.width() != now.width || pixels_.height() != now.height) {
            pixels_ = {};
            pixels_ = PixelBuffer(now.width, now.height);
        }
        if (pixels_) {
            ScreenCanvas canvas(pixels_, now, sheet_);
            events.paint(name_, canvas);
        }
    });
    if (!told) {
        // What it showed is better than nothing.
        stale_ = true;
        ::SetTimer(window_, paintLater, pause, nullptr);
    }
}

void CanvasWindow::scroll(int bar, unsigned request) noexcept {
    if (moveScrollBar(window_, bar, request)) {
        teller_.tell([this](platform::FormEvents& events) {
            events.scrolled(name_, scrollPosition(window_, SB_HORZ), scrollPosition(window_, SB_VERT));
        });
        ::UpdateWindow(window_);
    }
}

void CanvasWindow::wheel(bool across, WPARAM first) noexcept {
    POINT place = pointOf(static_cast<LPARAM>(::GetMessagePos()));
    ::ScreenToClient(window_, &place);
    const double steps = double(static_cast<short>(HIWORD(first))) / WHEEL_DELTA;
    // Across, the system counts to the right.
    const platform::Wheel wheel{.steps = across ? -steps : steps,
                                .across = across,
                                .control = (LOWORD(first) & MK_CONTROL) != 0,
                                .x = double(place.x),
                                .y = double(place.y)};
    teller_.tell([&](platform::FormEvents& events) { events.wheeled(name_, wheel); });
}

void CanvasWindow::press(PointerAction action, PointerButton button, LPARAM place) noexcept {
    if (held_ != PointerButton::none) {
        return;
    }
    ::SetFocus(window_);
    ::SetCapture(window_);
    held_ = button;
    point(action, button, place);
}

void CanvasWindow::release() noexcept {
    const PointerButton button = std::exchange(held_, PointerButton::none);
    if (button != PointerButton::none) {
        point(PointerAction::released, button, lastPlace_);
    }
}

void CanvasWindow::point(PointerAction action, PointerButton button, LPARAM place) noexcept {
    lastPlace_ = place;
    const POINT at = pointOf(place);
    const platform::Pointer pointer{
        .action = action, .button = button, .x = double(at.x), .y = double(at.y), .shift = ::GetKeyState(VK_SHIFT) < 0};
    teller_.tell([&](platform::FormEvents& events) { events.pointed(name_, pointer); });
}

}  // namespace platform_windows::forms
