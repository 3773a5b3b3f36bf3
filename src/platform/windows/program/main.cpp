// A macro of the system's headers has the name of one of the port's structures, so these come first.
#include "platform/windows/notification_area.h"
#include "platform/windows/program/windows_platform.h"
#include "startup/MMain.h"

#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    // A drive without a disk is an error for whoever asks for it, not a box of the system that waits for an answer.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    // The current directory is the host's; nothing that lies there is to be loaded as a part of the program.
    ::SetDllDirectoryW(L"");
    if (platform_windows::wasNotification()) {
        return 0;
    }

    platform_windows::program::WindowsPlatform platform;
    startup::MMain::Main(platform.ports());
    return 0;
}
