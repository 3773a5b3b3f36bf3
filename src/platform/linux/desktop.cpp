#include "platform/linux/desktop.h"

#include <cstdlib>

namespace platform_linux {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool desktopNamed() { return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY"); }

bool sessionNamed() { return isSet("DBUS_SESSION_BUS_ADDRESS") || isSet("XDG_RUNTIME_DIR"); }

}  // namespace platform_linux
