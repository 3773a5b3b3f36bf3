// The port PrintJobs on Windows.
#pragma once

#include <string>
#include <utility>

#include "platform/print_jobs.h"
#include "platform/windows/print/job_calls.h"
#include "platform/windows/print/job_records.h"

namespace platform_windows::print {

class WindowsPrintJobs final : public platform::PrintJobs {
public:
    explicit WindowsPrintJobs(JobCalls calls = {}) : calls_(std::move(calls)) {}

    // For a printer of another machine jobs that are still on this one count as well.
    int count(const std::string& printer) override;
    std::vector<platform::PrintJob> list(const std::string& printer) override;
    void control(const std::string& printer, std::uint32_t number, platform::JobOperation operation) override;
    void setPriority(const std::string& printer, std::uint32_t number, std::uint32_t priority) override;
    void purge(const std::string& printer) override;
    void resumePrinter(const std::string& printer) override;
    std::unique_ptr<platform::QueueWatch> watch(const std::string& printer) override;

private:
    void controlPrinter(const std::string& printer, DWORD command) const;

    JobCalls calls_;
    JobRecords records_;
};

}  // namespace platform_windows::print
