// The port ErrorReports on Windows.
#pragma once

#include "platform/crash/symbols.h"
#include "platform/error_reports.h"

namespace platform_windows::crash {

// The first thing that the program does: from here on a crash is reported. The table is the program's own.
void prepare(platform::crash::SymbolTable ownRoutines);

class WindowsErrorReports final : public platform::ErrorReports {
public:
    platform::Activity& activity() noexcept override;
    void untrapped(std::int32_t number, const std::string& description) noexcept override;
    std::string logFile() override;
    bool startedToOffer() noexcept override;
};

}  // namespace platform_windows::crash
