#include "platform/linux/program/linux_platform.h"

#include <string>

#include "platform/linux/process_start.h"
#include "platform/linux/unfinished_file.h"
#include "runtime/program.h"

namespace platform_linux::program {

LinuxPlatform::LinuxPlatform(int argumentCount, const char* const* arguments)
    : settings_(LinuxSettingsStore::usualPath()),
      system_(argumentCount, arguments, settings_),
      desktop_([this] { return system_.codePage(); }),
      dialogs_(desktop_),
      forms_(desktop_),
      printing_(
          {[this] { return system_.codePage(); }, std::string(runtime::programName) + " " + runtime::programVersion},
          settings_),
      ports_{system_,    settings_, printing_.spooler(), printing_.jobs(), dialogs_, imageFiles_,
             userFiles_, forms_,    xmlFiles_,           errorReports_} {
    prepareProcess();
    removeUnfinishedOnSignals();
}

}  // namespace platform_linux::program
