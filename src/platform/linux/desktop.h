// Whether there may be a desktop to show windows on.
#pragma once

namespace platform_linux {

// Whether a variable of the environment is set to something.
bool isSet(const char* variable);

// Whether the environment names a display, X11's or Wayland's. That windows can be opened there is not said.
bool desktopNamed();

// Whether the environment says where a user's session may have its message bus.
bool sessionNamed();

}  // namespace platform_linux
