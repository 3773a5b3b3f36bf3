// A button of a tool bar: flat, with a symbol, and without the focus.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <cstdint>
#include <vector>

#include "platform/symbol.h"

namespace platform_windows::forms {

class ToolButton {
public:
    // For a button that its owner draws; must not be gone before the window.
    ToolButton(HWND window, const platform::Symbol& symbol);
    ToolButton(const ToolButton&) = delete;
    ToolButton& operator=(const ToolButton&) = delete;
    ~ToolButton() = default;

    // As WM_DRAWITEM asks for it.
    void draw(HDC screen) const;

private:
    static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    // Whether the message is dealt with.
    bool take(UINT message, WPARAM first, LPARAM second);
    void hover(LPARAM place);
    void press();
    void click() const;
    void redraw() const { ::InvalidateRect(window_, nullptr, FALSE); }
    bool isOver(LPARAM place) const;

    HWND window_;
    WNDPROC next_;
    int size_;                           // of the symbol, in pixels
    std::vector<std::uint8_t> opacity_;  // of each
    bool hot_ = false;                   // the pointer is over it
    bool held_ = false;                  // since it was pressed
};

}  // namespace platform_windows::forms
