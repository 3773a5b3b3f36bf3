// One job in a printer's queue: what the spooler says of it, and what can be done with it.
#pragma once

#include <cstdint>
#include <string>

#include "platform/print_jobs.h"
#include "runtime/locale.h"

namespace printer {

// The job as it was when the queue was listed. Operations go to the spooler at once and leave the properties as they
// are; what the spooler refuses is platform::SpoolerError.
class CPrinterJob {
public:
    // The port is borrowed.
    CPrinterJob(platform::PrintJobs& jobs, std::string printerName, platform::PrintJob record)
        : jobs_(&jobs), printerName_(std::move(printerName)), record_(std::move(record)) {}

    std::uint32_t JobNumber() const { return record_.number; }
    const std::string& Document() const { return record_.document; }
    const std::string& User() const { return record_.user; }
    const std::string& Computer() const { return record_.computer; }
    std::uint32_t Position() const { return record_.position; }  // from 1
    std::uint32_t TotalPages() const { return record_.pages; }
    std::uint32_t PagesPrinted() const { return record_.pagesPrinted; }
    std::uint64_t Size() const { return record_.size; }  // bytes
    // Empty where the spooler does not tell.
    std::string Submitted(const runtime::Locale& locale) const;
    // "3 min", "2 h 05 min", "1 Tag 4 h".
    std::string WaitingTime() const;
    std::uint32_t Status() const { return record_.status; }  // platform::job_status
    // The texts of all flags, and what driver or server say themselves in brackets.
    std::string StatusText() const;

    void Pause() const { control(platform::JobOperation::pause); }
    void Resume() const { control(platform::JobOperation::resume); }
    void Cancel() const { control(platform::JobOperation::cancel); }
    void Restart() const { control(platform::JobOperation::restart); }
    void MoveToFront() const { control(platform::JobOperation::toFront); }

    std::uint32_t Priority() const { return record_.priority; }  // 1 to 99
    void Priority(std::uint32_t value) const;

private:
    void control(platform::JobOperation operation) const;

    platform::PrintJobs* jobs_;
    std::string printerName_;
    platform::PrintJob record_;
};

// The German texts of the flags of a job's status, in the order of their values and joined by commas; flags that have
// none stand behind them in upper-case hexadecimal.
std::string jobStatusText(std::uint32_t status);

}  // namespace printer
