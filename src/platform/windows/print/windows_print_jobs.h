// The port PrintJobs on Windows.
#pragma once

#include <string>

#include "platform/print_jobs.h"

namespace platform_windows::print {

class WindowsPrintJobs final : public platform::PrintJobs {
public:
    // For a printer of another machine jobs that are still on this one count as well.
    int count(const std::string& printer) override;
    void purge(const std::string& printer) override;
};

}  // namespace platform_windows::print
