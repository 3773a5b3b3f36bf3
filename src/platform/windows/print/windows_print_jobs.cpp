#include "platform/windows/print/windows_print_jobs.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/windows/print/queued_job.h"
#include "platform/windows/print/spooler_error.h"
#include "platform/windows/print/windows_queue_watch.h"

namespace platform_windows::print {

namespace {

using platform::JobOperation;

// False where the spooler cannot list them.
bool countJobs(const JobCalls& calls, HANDLE printer, DWORD& count) {
    std::vector<BYTE> memory;
    DWORD needed = 0;
    while (calls.enumJobs(printer, 0, allJobs, 1, memory.data(), static_cast<DWORD>(memory.size()), &needed, &count) ==
           FALSE) {
        if (::GetLastError() != ERROR_INSUFFICIENT_BUFFER || needed <= memory.size()) {
            return false;
        }
        memory.resize(needed);
    }
    return true;
}

struct Command {
    DWORD code;
    std::string_view undone;
};

Command commandOf(JobOperation operation) {
    switch (operation) {
        case JobOperation::pause:
            return {JOB_CONTROL_PAUSE, "wurde nicht angehalten"};
        case JobOperation::resume:
            return {JOB_CONTROL_RESUME, "wurde nicht fortgesetzt"};
        case JobOperation::cancel:
            return {JOB_CONTROL_DELETE, "wurde nicht abgebrochen"};
        case JobOperation::restart:
            return {JOB_CONTROL_RESTART, "wurde nicht neu begonnen"};
        case JobOperation::toFront:
            break;
    }
    return {0, "wurde nicht nach vorn gestellt"};
}

}  // namespace

int WindowsPrintJobs::count(const std::string& printer) {
    DWORD count = 0;
    if (!countJobs(calls_, calls_.openPrinter(printer, PRINTER_ACCESS_USE).get(), count)) {
        count = printerRecord(printer).jobs;
    }
    return static_cast<int>(std::min<DWORD>(count, INT32_MAX));
}

std::vector<platform::PrintJob> WindowsPrintJobs::list(const std::string& printer) {
    return records_.read(calls_, calls_.openPrinter(printer, PRINTER_ACCESS_USE).get(), printer);
}

void WindowsPrintJobs::control(const std::string& printer, std::uint32_t number, JobOperation operation) {
    const Command command = commandOf(operation);
    const QueuedJob job(calls_, printer, number, command.undone);
    if (operation == JobOperation::toFront) {
        job.change([](JOB_INFO_1W& record) { record.Position = 1; });
    } else {
        job.command(command.code);
    }
}

void WindowsPrintJobs::setPriority(const std::string& printer, std::uint32_t number, std::uint32_t priority) {
    const QueuedJob job(calls_, printer, number, "behält seine Priorität");
    job.change([=](JOB_INFO_1W& record) {
        record.Priority = std::clamp(priority, platform::lowestPriority, platform::highestPriority);
    });
}

void WindowsPrintJobs::controlPrinter(const std::string& printer, DWORD command) const {
    const PrinterHandle opened = calls_.openPrinter(printer, PRINTER_ACCESS_ADMINISTER);
    ::SetLastError(ERROR_SUCCESS);
    if (calls_.setPrinter(opened.get(), 0, nullptr, command) == FALSE) {
        throw failure(lastError(), printer);
    }
}

void WindowsPrintJobs::purge(const std::string& printer) { controlPrinter(printer, PRINTER_CONTROL_PURGE); }

void WindowsPrintJobs::resumePrinter(const std::string& printer) {
    try {
        controlPrinter(printer, PRINTER_CONTROL_RESUME);
    } catch (const platform::SpoolerError& error) {
        throw error.about("Der Drucker wurde nicht fortgesetzt");
    }
}

std::unique_ptr<platform::QueueWatch> WindowsPrintJobs::watch(const std::string& printer) {
    return WindowsQueueWatch::of(calls_, calls_.openPrinter(printer, PRINTER_ACCESS_USE));
}

}  // namespace platform_windows::print
