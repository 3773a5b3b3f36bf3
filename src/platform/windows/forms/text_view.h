// A box with many lines to be read.
#pragma once

#include "platform/windows/gdi/gdi_handles.h"

namespace platform_windows::forms {

class TextView {
public:
    static const DWORD windowStyle;

    // Must live as long as the window; the font's height is that of the dialog's, in pixels.
    TextView(HWND window, int fontPixels);
    TextView(const TextView&) = delete;
    TextView& operator=(const TextView&) = delete;
    ~TextView() = default;

private:
    static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;

    WNDPROC next_;
    gdi::Font font_;
};

}  // namespace platform_windows::forms
