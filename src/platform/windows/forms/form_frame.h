// Where a form's window lies and how high it is.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include "platform/forms.h"

namespace platform_windows::forms {

// What the window is larger by than the room inside its frame.
SIZE frameSize(HWND form);

// Of the screen that the window is on or next to, without the taskbar.
RECT roomOfScreen(HWND window);

// The window's height outside its frame, in pixels. The font is the dialog's, by its height in pixels.
int frameHeight(HWND form, platform::FormHeight height, int fontPixels);

// Gives the window that height, and keeps it on its screen.
void setFrameHeight(HWND form, int height);

// Into the middle of the screen on which the user works, or of the window that the form belongs to.
void centre(HWND form);

// Also while it is maximized or minimized.
platform::WindowPlace placeOf(HWND form);

// Neither maximized nor minimized, on a screen that there is, no smaller than the least size outside its frame.
void moveTo(HWND form, const platform::WindowPlace& place, SIZE least);

}  // namespace platform_windows::forms
