// The ports on Linux in one piece; main makes one and keeps it as long as the program runs.
#pragma once

#include "platform/linux/linux_dialogs.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/linux_system.h"

namespace platform_linux {

class LinuxPlatform {
public:
    // To be made before anything else opens a file: standard input, output and error that whoever started the program
    // has closed lead nowhere from then on, instead of into the first file opened. A broken pipe and a file that grows
    // too large become errors instead of the end of the process. The arguments are those of main().
    LinuxPlatform(int argumentCount, const char* const* arguments);

    LinuxSystem& system() { return system_; }
    LinuxSettingsStore& settings() { return settings_; }
    LinuxDialogs& dialogs() { return dialogs_; }

private:
    LinuxSettingsStore settings_;
    LinuxSystem system_;
    LinuxDialogs dialogs_;
};

}  // namespace platform_linux
