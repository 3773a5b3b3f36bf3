#include "platform/windows/print/queued_job.h"

#include <vector>

#include "platform/windows/print/spooler_error.h"

namespace platform_windows::print {

QueuedJob::QueuedJob(const JobCalls& calls, const std::string& printer, DWORD number, std::string_view undone)
    : calls_(calls), printer_(printer), number_(number), undone_(undone) {
    try {
        // Who may do what with a job, the spooler decides by the job.
        handle_ = calls_.openPrinter(printer, PRINTER_ACCESS_USE);
    } catch (const platform::SpoolerError& error) {
        throw error.about(this->undone());
    }
}

void QueuedJob::command(DWORD what) const {
    ::SetLastError(ERROR_SUCCESS);
    if (calls_.setJob(handle_.get(), number_, 0, nullptr, what) == FALSE) {
        refuse();
    }
}

void QueuedJob::change(const std::function<void(JOB_INFO_1W&)>& values) const {
    std::vector<BYTE> memory(sizeof(JOB_INFO_1W));
    DWORD needed = 0;
    ::SetLastError(ERROR_SUCCESS);
    while (calls_.getJob(handle_.get(), number_, 1, memory.data(), static_cast<DWORD>(memory.size()), &needed) ==
           FALSE) {
        if (::GetLastError() != ERROR_INSUFFICIENT_BUFFER || needed <= memory.size()) {
            refuse();
        }
        memory.resize(needed);
    }
    auto& record = *reinterpret_cast<JOB_INFO_1W*>(memory.data());
    record.Position = JOB_POSITION_UNSPECIFIED;
    values(record);
    ::SetLastError(ERROR_SUCCESS);
    if (calls_.setJob(handle_.get(), number_, 1, memory.data(), 0) == FALSE) {
        refuse();
    }
}

void QueuedJob::refuse() const {
    const DWORD code = lastError();
    if (isGone(code)) {
        throw platform::SpoolerError(
            code, "Drucker „" + printer_ + "“: " + undone() + ", denn er steht nicht mehr in der Warteschlange.");
    }
    throw failure(code, printer_).about(undone());
}

// The spooler calls its number an invalid parameter, and Wine's says nothing at all.
bool QueuedJob::isGone(DWORD code) const {
    if (code != ERROR_INVALID_PARAMETER && code != ERROR_GEN_FAILURE) {
        return false;
    }
    DWORD needed = 0;
    ::SetLastError(ERROR_SUCCESS);
    return calls_.getJob(handle_.get(), number_, 1, nullptr, 0, &needed) == FALSE &&
           ::GetLastError() != ERROR_INSUFFICIENT_BUFFER;
}

std::string QueuedJob::undone() const { return "Auftrag " + std::to_string(number_) + ' ' + undone_; }

}  // namespace platform_windows::print
