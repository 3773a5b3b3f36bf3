// A macro of the system's headers has the name of one of the port's structures, so these come first.
#include "platform/windows/print/windows_spooler.h"
#include "platform/windows/windows_dialogs.h"
#include "platform/windows/windows_image_files.h"
#include "platform/windows/windows_settings_store.h"
#include "platform/windows/windows_system.h"
#include "startup/MMain.h"

#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    // A drive without a disk is an error for whoever asks for it, not a box of the system that waits for an answer.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    // The current directory is the host's; nothing that lies there is to be loaded as a part of the program.
    ::SetDllDirectoryW(L"");

    platform_windows::WindowsSystem system;
    platform_windows::WindowsSettingsStore settings;
    platform_windows::WindowsSpooler spooler;
    platform_windows::WindowsDialogs dialogs;
    platform_windows::WindowsImageFiles imageFiles;
    platform::Platform platform{system, settings, spooler, dialogs, imageFiles};
    MMain::Main(platform);
    return 0;
}
