// Scroll bars of a window.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include "platform/forms.h"

namespace platform_windows::forms {

// SB_HORZ or SB_VERT.
void setScrollBar(HWND window, int bar, const platform::ScrollBar& scroll);

int scrollPosition(HWND window, int bar);

// Moves a bar as WM_HSCROLL or WM_VSCROLL says, by its first word. Whether it is at another position.
bool moveScrollBar(HWND window, int bar, unsigned request);

}  // namespace platform_windows::forms
