// The port PrintJobs on Linux. Jobs are CUPS's; the built-in printer has none waiting.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/spool/lazy_print_server.h"
#include "platform/print_jobs.h"

namespace platform_linux::spool {

class LinuxPrintJobs final : public platform::PrintJobs {
public:
    // The server is borrowed.
    explicit LinuxPrintJobs(LazyPrintServer& cups) : cups_(cups) {}

    int count(const std::string& printer) override;
    std::vector<platform::PrintJob> list(const std::string& printer) override;
    void control(const std::string& printer, std::uint32_t number, platform::JobOperation operation) override;
    void setPriority(const std::string& printer, std::uint32_t number, std::uint32_t priority) override;
    void purge(const std::string& printer) override;
    void resumePrinter(const std::string& printer) override;
    std::unique_ptr<platform::QueueWatch> watch(const std::string& printer) override;

private:
    // Of the queue that has the job; throws where it is the built-in printer's.
    platform::PrintJobs& jobsWith(const std::string& printer, std::uint32_t number);

    LazyPrintServer& cups_;
};

}  // namespace platform_linux::spool
