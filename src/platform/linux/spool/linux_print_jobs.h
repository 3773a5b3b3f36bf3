// The port PrintJobs on Linux. Jobs are CUPS's; the built-in printer has none waiting.
#pragma once

#include <string>

#include "platform/linux/spool/lazy_print_server.h"
#include "platform/print_jobs.h"

namespace platform_linux::spool {

class LinuxPrintJobs final : public platform::PrintJobs {
public:
    // The server is borrowed.
    explicit LinuxPrintJobs(LazyPrintServer& cups) : cups_(cups) {}

    int count(const std::string& printer) override;
    void purge(const std::string& printer) override;

private:
    LazyPrintServer& cups_;
};

}  // namespace platform_linux::spool
