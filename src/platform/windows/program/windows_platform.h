// The ports on Windows in one piece; main makes one and keeps it as long as the program runs.
#pragma once

#include "platform/platform.h"
#include "platform/windows/crash/windows_error_reports.h"
#include "platform/windows/forms/windows_forms.h"
#include "platform/windows/print/windows_print_jobs.h"
#include "platform/windows/print/windows_spooler.h"
#include "platform/windows/windows_dialogs.h"
#include "platform/windows/windows_image_files.h"
#include "platform/windows/windows_settings_store.h"
#include "platform/windows/windows_system.h"
#include "platform/windows/windows_user_files.h"
#include "platform/windows/windows_xml_files.h"

namespace platform_windows::program {

class WindowsPlatform {
public:
    platform::Platform& ports() { return ports_; }

private:
    WindowsSystem system_;
    WindowsSettingsStore settings_;
    print::WindowsSpooler spooler_;
    print::WindowsPrintJobs jobs_;
    WindowsDialogs dialogs_;
    WindowsImageFiles imageFiles_;
    WindowsUserFiles userFiles_;
    forms::WindowsForms forms_;
    WindowsXmlFiles xmlFiles_;
    crash::WindowsErrorReports errorReports_;
    platform::Platform ports_{system_,     settings_,  spooler_, jobs_,     dialogs_,
                              imageFiles_, userFiles_, forms_,   xmlFiles_, errorReports_};
};

}  // namespace platform_windows::program
