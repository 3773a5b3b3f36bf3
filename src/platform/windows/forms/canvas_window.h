// The window of a canvas: painted by the program without flicker, with scroll bars, and with the mouse's messages.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <string>

#include "platform/forms.h"
#include "platform/windows/forms/event_teller.h"
#include "platform/windows/forms/pixel_buffer.h"
#include "platform/windows/gdi/sheet_surface.h"

namespace platform_windows::forms {

// WM_MOUSEHWHEEL, which the headers for the oldest Windows lack.
inline constexpr UINT wheelAcross = 0x020E;

class CanvasWindow {
public:
    // The name of the class of windows, which the system knows from now on.
    static const wchar_t* windowClass();

    // For a window of that class. The name is the control's. All must outlive it, or the window be gone with it.
    CanvasWindow(HWND window, const std::string& name, EventTeller& teller);
    CanvasWindow(const CanvasWindow&) = delete;
    CanvasWindow& operator=(const CanvasWindow&) = delete;
    ~CanvasWindow() = default;

    platform::CanvasSize size() const;
    void invalidate();
    void setScrollBars(const platform::ScrollBar& across, const platform::ScrollBar& down);
    void setCursor(platform::Cursor cursor);
    // The event follows when nothing else happens in the program.
    void announceSize();

private:
    static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    LRESULT answer(UINT message, WPARAM first, LPARAM second) noexcept;
    bool answerMouse(UINT message, WPARAM first, LPARAM second) noexcept;

    void paint() noexcept;
    void paintAnew() noexcept;
    void sized() noexcept;
    void tellResized() noexcept;
    void scroll(int bar, unsigned request) noexcept;
    void wheel(bool across, WPARAM first) noexcept;
    void press(platform::PointerAction action, platform::PointerButton button, LPARAM place) noexcept;
    void release() noexcept;
    void point(platform::PointerAction action, platform::PointerButton button, LPARAM place) noexcept;

    HWND window_;
    const std::string& name_;
    EventTeller& teller_;
    PixelBuffer pixels_;
    gdi::SheetSurface sheet_;  // keeps its fonts from one painting to the next
    HCURSOR cursor_;
    bool stale_ = true;  // what the pixels show
    platform::PointerButton held_ = platform::PointerButton::none;
    LPARAM lastPlace_ = 0;
};

}  // namespace platform_windows::forms
