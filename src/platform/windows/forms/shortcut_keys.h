// Keys that the design of a form gives something to do.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <vector>

#include "platform/form_design.h"

namespace platform_windows::forms {

// What a message of the keyboard asks for; null where it is none of them.
const platform::Shortcut* shortcutOf(const std::vector<platform::Shortcut>& shortcuts, const MSG& message, bool inBox);

}  // namespace platform_windows::forms
