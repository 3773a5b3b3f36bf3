// The spooler's records of jobs.
#pragma once

#include <string>
#include <vector>

#include "platform/print_jobs.h"
#include "platform/windows/print/job_calls.h"

namespace platform_windows::print {

inline constexpr DWORD allJobs = 0xFFFF;

// The jobs of a queue, in its order. What they need of memory is kept for the next time, so that one question to the
// spooler is enough for them.
class JobRecords {
public:
    // None where the spooler has no list (Wine). Throws SpoolerError, which names the printer.
    std::vector<platform::PrintJob> read(const JobCalls& calls, HANDLE printer, const std::string& name);

private:
    std::vector<BYTE> memory_;
};

}  // namespace platform_windows::print
