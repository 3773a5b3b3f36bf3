// Texts that appear beside a control while the pointer rests on it.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <string>

namespace platform_windows::forms {

// A window for them; it is gone with the form.
HWND makeToolTips(HWND form);

void addToolTip(HWND tips, HWND control, const std::string& text);

}  // namespace platform_windows::forms
