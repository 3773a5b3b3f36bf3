// Text that is exchanged with other programs.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <string>

namespace platform_windows::forms {

// Empty where there is none.
std::wstring clipboardText(HWND owner);

// Lines end with "\n" in the text, and as other programs have it there. Nothing where another program does not let go
// of the clipboard.
void setClipboardText(HWND owner, const std::string& text);

}  // namespace platform_windows::forms
