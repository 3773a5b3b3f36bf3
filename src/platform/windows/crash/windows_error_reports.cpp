#include "platform/windows/crash/windows_error_reports.h"

#include "platform/crash/report_log.h"
#include "platform/windows/crash/crash_handlers.h"
#include "platform/windows/crash/crash_report.h"
#include "platform/windows/files.h"
#include "platform/windows/places.h"
#include "platform/windows/wide_text.h"
#include "runtime/program.h"

namespace platform_windows::crash {

namespace {

// Empty where the user has no folder for it.
std::wstring logPath() {
    const std::wstring data = localData();
    return data.empty() ? data
                        : data + L'\\' + widen(runtime::programName) + L'\\' + widen(platform::crash::logFileName);
}

}  // namespace

void prepare(platform::crash::SymbolTable ownRoutines) {
    const bool offers = ::GetEnvironmentVariableW(offerVariable, nullptr, 0) != 0;
    // Whatever it starts is not there for that.
    ::SetEnvironmentVariableW(offerVariable, nullptr);
    prepareReport(ownRoutines, logPath(), offers);
    installHandlers();
}

platform::Activity& WindowsErrorReports::activity() noexcept { return crash::activity(); }

void WindowsErrorReports::untrapped(std::int32_t number, const std::string& description) noexcept {
    takeReport();
    reportOf(number, description);
    reportAndGoOn();
}

bool WindowsErrorReports::startedToOffer() noexcept { return isOffering(); }

std::string WindowsErrorReports::logFile() { return narrow(logPath()); }

}  // namespace platform_windows::crash
