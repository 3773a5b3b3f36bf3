#include "platform/linux/loaded_desktop.h"

#include <chrono>
#include <exception>

#include "platform/linux/desktop.h"
#include "platform/linux/forked_call.h"
#include "platform/linux/module.h"
#include "platform/linux/screen/screen.h"

namespace platform_linux {

namespace {

std::unique_ptr<qt::Desktop> create(const qt::CodePageSource& codePage) {
    return reinterpret_cast<qt::DesktopFactory>(moduleEntry("qt"))(codePage);
}

// In another process. There Qt is never taken down again, which may hang as well as setting it up.
bool isCreatedElsewhere() {
    constexpr std::chrono::seconds limit{10};
    return forkedCall([] { return create({}).release() != nullptr ? 1 : 0; }, limit).value_or(0) != 0;
}

// Of X11 only; Qt takes Wayland where there is no other.
bool displayTakesWindows() {
    return isSet("DISPLAY") && !isSet("QT_QPA_PLATFORM") && !isSet("WAYLAND_DISPLAY") &&
           reinterpret_cast<screen::ScreenDpi>(moduleEntry("screen"))() >= 0;
}

std::unique_ptr<qt::Desktop> openDesktop(Trial trial, const qt::CodePageSource& codePage) {
    try {
        const bool sure = trial == Trial::displayOnly && displayTakesWindows();
        return desktopNamed() && (sure || isCreatedElsewhere()) ? create(codePage) : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

}  // namespace

qt::Desktop* LoadedDesktop::get(Trial trial) {
    if (!desktop_) {
        desktop_ = openDesktop(trial, codePage_);
    }
    return desktop_->get();
}

}  // namespace platform_linux
