// Where a form's window lies and how high it is.
#pragma once

#include <windows.h>

#include "platform/forms.h"

namespace platform_windows::forms {

// The window's height outside its frame, in pixels. The font is the dialog's, by its height in pixels.
int frameHeight(HWND form, platform::FormHeight height, int fontPixels);

// Gives the window that height, and keeps it on its screen.
void setFrameHeight(HWND form, int height);

// Into the middle of the screen on which the user works.
void centre(HWND form);

}  // namespace platform_windows::forms
