// Controls of which an item is chosen: lists, boxes with a list, option buttons.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <string>
#include <vector>

#include "platform/form_design.h"

namespace platform_windows::forms {

// One that has a list to be opened.
bool dropsDown(platform::ControlKind kind);

// The text of a box stays.
void setListItems(HWND window, platform::ControlKind kind, const std::vector<std::string>& items);

// -1 where none is.
int selectedItem(HWND window, platform::ControlKind kind);
void selectItem(HWND window, platform::ControlKind kind, int index);

// Whether a notification tells that the user has chosen an item.
bool isChoice(HWND window, platform::ControlKind kind, unsigned notification);

}  // namespace platform_windows::forms
