// A macro of the system's headers has the name of one of the port's structures, so these come first.
#include "platform/windows/crash/windows_error_reports.h"
#include "platform/windows/notification_area.h"
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
    // A drive without a disk is an error for whoever asks for it, not a box of the system that waits for an answer.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    // A long page keeps the program from its windows; they are to stay as they are, not to be called hung.
    ::DisableProcessWindowsGhosting();
    // The current directory is the host's; nothing that lies there is to be loaded as a part of the program.
    ::SetDllDirectoryW(L"");
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
