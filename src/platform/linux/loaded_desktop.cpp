#include "platform/linux/loaded_desktop.h"

#include <chrono>
#include <exception>

#include "platform/linux/desktop.h"
#include "platform/linux/forked_call.h"
#include "platform/linux/module.h"

namespace platform_linux {

namespace {

std::unique_ptr<qt::Desktop> openDesktop() {
    constexpr std::chrono::seconds limit{10};
    const auto create = [] { return reinterpret_cast<qt::DesktopFactory>(moduleEntry("qt"))(); };
    const auto tryOut = [&create] {
        // Never destroyed, as taking Qt down again may hang as well as setting it up.
        return create().release() != nullptr ? 1 : 0;
    };
    if (!desktopNamed() || forkedCall(tryOut, limit).value_or(0) == 0) {
        return nullptr;
    }
    try {
        return create();
    } catch (const std::exception&) {
        return nullptr;
    }
}

}  // namespace

qt::Desktop* LoadedDesktop::get() {
    if (!desktop_) {
        desktop_ = openDesktop();
    }
    return desktop_->get();
}

}  // namespace platform_linux
