// The ports on Linux in one piece; main makes one and keeps it as long as the program runs.
#pragma once

#include "platform/linux/crash/linux_error_reports.h"
#include "platform/linux/linux_dialogs.h"
#include "platform/linux/linux_forms.h"
#include "platform/linux/linux_image_files.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/linux_system.h"
#include "platform/linux/linux_user_files.h"
#include "platform/linux/linux_xml_files.h"
#include "platform/linux/spool/linux_printing.h"
#include "platform/platform.h"

namespace platform_linux::program {

class LinuxPlatform {
public:
    // To be made before anything else opens a file, as prepareProcess() wants it. A signal that ends the program leaves
    // no unfinished file. The arguments are those of main().
    LinuxPlatform(int argumentCount, const char* const* arguments);

    platform::Platform& ports() { return ports_; }

private:
    LinuxSettingsStore settings_;
    LinuxSystem system_;
    LoadedDesktop desktop_;
    LinuxDialogs dialogs_;
    LinuxForms forms_;
    LinuxImageFiles imageFiles_;
    LinuxUserFiles userFiles_;
    LinuxXmlFiles xmlFiles_;
    crash::LinuxErrorReports errorReports_;
    spool::LinuxPrinting printing_;
    platform::Platform ports_;
};

}  // namespace platform_linux::program
