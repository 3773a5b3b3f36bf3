// One job of a queue, for something to be done with it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/spooler_error.h"
#include "platform/windows/print/job_calls.h"

namespace platform_windows::print {

class QueuedJob {
public:
    // Everything throws SpoolerError, which says what became of the job ("wurde nicht angehalten") and why.
    QueuedJob(const JobCalls& calls, const std::string& printer, DWORD number, std::string_view undone);

    // One of JOB_CONTROL_...
    void command(DWORD what) const;

    // Gives the job's record other values; the position in it is one that changes nothing.
    void change(const std::function<void(JOB_INFO_1W&)>& values) const;

private:
    [[noreturn]] void refuse() const;
    bool isGone(DWORD code) const;
    std::string undone() const;

    const JobCalls& calls_;
    std::string printer_;
    DWORD number_;
    std::string undone_;
    PrinterHandle handle_;
};

}  // namespace platform_windows::print
