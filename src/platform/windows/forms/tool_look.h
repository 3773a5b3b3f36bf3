// What is seen of a button of a tool bar while the pointer is over it.
#pragma once

#include "platform/windows/gdi/system_headers.h"

namespace platform_windows::forms {

// As the user's theme has it, where there is one.
void drawToolFrame(HWND button, HDC to, RECT room, bool pressed);

}  // namespace platform_windows::forms
