// The user's desktop, shared by all that shows windows there.
#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "platform/linux/qt/qt_desktop.h"

namespace platform_linux {

// What is made sure of before Qt is loaded, which ends the process where it cannot reach the display. A job that has a
// message to show goes on in any case, so Qt is tried in another process first. For a window that the user has asked
// for, and waits for, it is enough that the display takes windows; one that hangs keeps it waiting.
enum class Trial { whole, displayOnly };

// There is a desktop where DISPLAY or WAYLAND_DISPLAY is set and the module "qt" can open windows there; this is found
// out, and Qt loaded, when it is first asked for.
class LoadedDesktop {
public:
    // The code page is asked for when a sheet of paper is shown; where none ever is, there need be none.
    explicit LoadedDesktop(qt::CodePageSource codePage = {}) : codePage_(std::move(codePage)) {}

    // Null where there is none.
    qt::Desktop* get(Trial trial = Trial::whole);

    // The same, but null as long as nobody has asked for it.
    qt::Desktop* ifLoaded() const { return desktop_ ? desktop_->get() : nullptr; }

private:
    qt::CodePageSource codePage_;
    std::optional<std::unique_ptr<qt::Desktop>> desktop_;  // nothing: not tried yet; a null pointer: there is none
};

}  // namespace platform_linux
