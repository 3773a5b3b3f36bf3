// The messenger of hosts inside an emulator, a program of its own.
#include <windows.h>

#include <exception>
#include <new>

#include "messenger/Main.h"
#include "platform/windows/messenger/windows_messenger_system.h"
#include "platform/windows/notification_area.h"
#include "platform/windows/process_start.h"
#include "platform/windows/windows_dialogs.h"
#include "platform/windows/windows_system.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    platform_windows::beginProcess();
    if (platform_windows::wasNotification()) {
        return 0;
    }
    try {
        platform_windows::WindowsSystem system;
        platform_windows::messenger::WindowsMessengerSystem messengerSystem;
        return messenger::Main(system, messengerSystem);
    } catch (const std::bad_alloc&) {
        platform_windows::WindowsDialogs().outOfMemory();
    } catch (const std::exception& error) {
        platform_windows::WindowsDialogs().diagnostic(error.what());
    }
    return 1;
}
