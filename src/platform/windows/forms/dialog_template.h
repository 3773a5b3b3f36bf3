// A form's design as the system's functions for dialogs take it.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <cstddef>
#include <string>
#include <vector>

#include "platform/forms.h"

namespace platform_windows::forms {

// The font of message boxes, in which the user wants to read dialogs.
struct DialogFont {
    std::wstring face;
    int points = 8;
    int pixels = 11;  // its height on the screen
    LONG weight = FW_NORMAL;
};
DialogFont dialogFont();

// The number of a control's window; those of the default button and the button for cancelling are the system's.
int numberOf(const platform::FormDesign& design, std::size_t control);

// A DLGTEMPLATEEX with its items: invisible, and as high as nothing yet.
std::vector<WORD> dialogTemplate(const platform::FormDesign& design, const DialogFont& font);

}  // namespace platform_windows::forms
