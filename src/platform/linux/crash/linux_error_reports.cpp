#include "platform/linux/crash/linux_error_reports.h"

#include <cstdlib>

#include "platform/crash/report_log.h"
#include "platform/linux/crash/crash_handlers.h"
#include "platform/linux/crash/crash_report.h"
#include "platform/linux/crash/second_process.h"
#include "platform/linux/desktop.h"
#include "platform/linux/user_folders.h"

namespace platform_linux::crash {

namespace {

// Empty where the user has no folder for it.
std::string logPath() {
    const std::string folder = userFolder("XDG_DATA_HOME", ".local/share");
    return folder.empty() ? folder : folder + "/" + std::string(platform::crash::logFileName);
}

}  // namespace

void prepare(int argumentCount, const char* const* arguments) {
    const std::span<const char* const> all(arguments, static_cast<std::size_t>(argumentCount));
    const bool offers = isSet(offerVariable);
    // Whatever it starts is not there for that.
    ::unsetenv(offerVariable);
    prepareReport(all.empty() ? all : all.subspan(1), logPath(), offers);
    installHandlers();
}

platform::Activity& LinuxErrorReports::activity() noexcept { return crash::activity(); }

void LinuxErrorReports::untrapped(std::int32_t number, const std::string& description) noexcept {
    takeReport();
    reportOf(number, description);
    reportAndGoOn();
}

std::string LinuxErrorReports::logFile() { return logPath(); }

bool LinuxErrorReports::startedToOffer() noexcept { return isOffering(); }

}  // namespace platform_linux::crash
