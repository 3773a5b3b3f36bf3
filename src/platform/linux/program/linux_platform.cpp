#include "platform/linux/program/linux_platform.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "platform/linux/unfinished_file.h"
#include "runtime/program.h"

namespace platform_linux::program {

namespace {

void fillStandardDescriptors() {
    // A new descriptor is the lowest number free, so this ends with the first one beyond standard error.
    int descriptor = -1;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

void ignoreSignal(int number) {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    ::sigaction(number, &ignore, nullptr);
}

}  // namespace

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
    fillStandardDescriptors();
    ignoreSignal(SIGPIPE);
    ignoreSignal(SIGXFSZ);
    removeUnfinishedOnSignals();
}

}  // namespace platform_linux::program
