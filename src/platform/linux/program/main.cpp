#include <new>

#include "platform/linux/crash/linux_error_reports.h"
#include "platform/linux/program/linux_platform.h"
#include "startup/MMain.h"

namespace {

using platform_linux::program::LinuxPlatform;

// Whether there was memory for it.
bool run(int argc, char** argv, void (*function)(platform::Platform&) noexcept) {
    try {
        LinuxPlatform platform(argc, argv);
        function(platform.ports());
        return true;
    } catch (const std::bad_alloc&) {
        platform_linux::LoadedDesktop desktop;
        platform_linux::LinuxDialogs(desktop).outOfMemory();
        return false;
    }
}

}  // namespace

int main(int argc, char** argv) {
    platform_linux::crash::prepare(argc, argv);
    if (!run(argc, argv, startup::MMain::Main)) {
        run(argc, argv, startup::MMain::giveUp);
    }
    return 0;
}
