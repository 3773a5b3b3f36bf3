// The user's desktop, shared by all that shows windows there.
#pragma once

#include <memory>
#include <optional>

#include "platform/linux/qt/qt_desktop.h"

namespace platform_linux {

// There is a desktop where DISPLAY or WAYLAND_DISPLAY is set and the module "qt" can open windows there; this is found
// out, and Qt loaded, when it is first asked for.
class LoadedDesktop {
public:
    // Null where there is none.
    qt::Desktop* get();

    // The same, but null as long as nobody has asked for it.
    qt::Desktop* ifLoaded() const { return desktop_ ? desktop_->get() : nullptr; }

private:
    std::optional<std::unique_ptr<qt::Desktop>> desktop_;  // nothing: not tried yet; a null pointer: there is none
};

}  // namespace platform_linux
