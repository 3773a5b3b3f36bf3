// Text boxes that take only some characters.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <functional>
#include <string>

namespace platform_windows::forms {

// Whether a box takes a character where that text stands.
using CharacterFilter = std::function<bool(const std::wstring& text, wchar_t character)>;

// Lets the filter decide about every character that is typed or pasted into the box; what only moves or copies is not
// asked about, but for the backspace. The filter must live as long as the box.
void filterBox(HWND box, CharacterFilter& filter);

// What stands in a window.
std::wstring windowText(HWND window);

}  // namespace platform_windows::forms
