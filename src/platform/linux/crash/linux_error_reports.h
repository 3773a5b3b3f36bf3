// The port ErrorReports on Linux.
#pragma once

#include "platform/error_reports.h"

namespace platform_linux::crash {

// The first thing that the program does: from here on a crash is reported. The arguments are those of main().
void prepare(int argumentCount, const char* const* arguments);

class LinuxErrorReports final : public platform::ErrorReports {
public:
    platform::Activity& activity() noexcept override;
    void untrapped(std::int32_t number, const std::string& description) noexcept override;
    std::string logFile() override;
    bool startedToOffer() noexcept override;
};

}  // namespace platform_linux::crash
