// The port ErrorReports on Windows.
#pragma once

#include "platform/error_reports.h"

namespace platform_windows {

class WindowsErrorReports final : public platform::ErrorReports {
public:
    platform::Activity& activity() noexcept override { return activity_; }
    void untrapped(std::int32_t /*number*/, const std::string& /*description*/) noexcept override {}
    std::string logFile() override { return {}; }

private:
    platform::Activity activity_;
};

}  // namespace platform_windows
