// The port PrintJobs on the queues of CUPS.
#pragma once

#include "platform/linux/cups/connection.h"
#include "platform/print_jobs.h"

namespace platform_linux::cups {

class CupsPrintJobs final : public platform::PrintJobs {
public:
    // The connection is borrowed.
    explicit CupsPrintJobs(Connection& connection) : connection_(connection) {}

    int count(const std::string& queue) override;
    void purge(const std::string& queue) override;

private:
    Connection& connection_;
};

}  // namespace platform_linux::cups
