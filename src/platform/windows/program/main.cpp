// A macro of the system's headers has the name of one of the port's structures, so these come first.
#include "platform/windows/crash/windows_error_reports.h"
#include "platform/windows/notification_area.h"
#include "platform/windows/process_start.h"
#include "platform/windows/program/windows_platform.h"
#include "startup/MMain.h"

#include <windows.h>

#include <new>

namespace platform_windows::program {

// Whether there was memory for it.
static bool run(void (*function)(platform::Platform&) noexcept) {
    try {
        WindowsPlatform platform;
        function(platform.ports());
        return true;
    } catch (const std::bad_alloc&) {
        platform_windows::WindowsDialogs().outOfMemory();
        return false;
    }
}

}  // namespace platform_windows::program

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    platform_windows::beginProcess();
    // A long page keeps the program from its windows; they are to stay as they are, not to be called hung.
    ::DisableProcessWindowsGhosting();
    platform_windows::crash::prepare(krvwinpr_symbols);
    if (platform_windows::wasNotification()) {
        return 0;
    }

    using platform_windows::program::run;
    if (!run(startup::MMain::Main)) {
        run(startup::MMain::giveUp);
    }
    return 0;
}
