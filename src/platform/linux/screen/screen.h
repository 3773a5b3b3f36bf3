// Interface of the module "screen": asks the display for its resolution.
#pragma once

namespace platform_linux::screen {

// The module's entry function: pixels per inch that the user's desktop has set (resource Xft.dpi), rounded; 0 where
// none is set, -1 where there is no display that takes windows of this user. May wait for the display as long as that
// keeps it waiting.
using ScreenDpi = int (*)();

}  // namespace platform_linux::screen
