#include "platform/windows/print/job_records.h"

#include <algorithm>
#include <span>

#include "platform/windows/print/spooler_error.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::print {

namespace {

constexpr std::size_t usualRoom = 0x10000;

std::string textOf(const wchar_t* text) { return text != nullptr ? narrow(text) : std::string(); }

// The spooler writes "\\PC".
std::string computerOf(const wchar_t* name) {
    std::string computer = textOf(name);
    computer.erase(0, computer.find_first_not_of('\\'));
    return computer;
}

std::int64_t secondsOf(const FILETIME& moment) {
    constexpr std::int64_t ticks = 10'000'000;
    return static_cast<std::int64_t>(ULARGE_INTEGER{{moment.dwLowDateTime, moment.dwHighDateTime}}.QuadPart) / ticks;
}

// The clock of a server may be ahead.
std::int64_t secondsBetween(const SYSTEMTIME& before, const FILETIME& now) {
    FILETIME start{};
    return ::SystemTimeToFileTime(&before, &start) == FALSE
               ? 0
               : std::max<std::int64_t>(0, secondsOf(now) - secondsOf(start));
}

std::optional<runtime::DateTime> localMoment(const SYSTEMTIME& moment) {
    SYSTEMTIME local{};
    if (moment.wYear == 0 || ::SystemTimeToTzSpecificLocalTime(nullptr, &moment, &local) == FALSE) {
        return std::nullopt;
    }
    return runtime::DateTime{.year = local.wYear,
                             .month = local.wMonth,
                             .day = local.wDay,
                             .hour = local.wHour,
                             .minute = local.wMinute,
                             .second = local.wSecond,
                             .millisecond = local.wMilliseconds};
}

// Moments of the spooler are in UTC.
platform::PrintJob jobOf(const JOB_INFO_2W& record, const FILETIME& now) {
    platform::PrintJob job;
    job.number = record.JobId;
    job.document = textOf(record.pDocument);
    job.user = textOf(record.pUserName);
    job.computer = computerOf(record.pMachineName);
    job.priority = record.Priority;
    job.position = record.Position;
    job.pages = record.TotalPages;
    job.pagesPrinted = record.PagesPrinted;
    job.size = record.Size;
    job.submitted = localMoment(record.Submitted);
    job.waitingSeconds = job.submitted ? secondsBetween(record.Submitted, now) : 0;
    job.status = record.Status;
    job.statusText = textOf(record.pStatus);
    return job;
}

}  // namespace

std::vector<platform::PrintJob> JobRecords::read(const JobCalls& calls, HANDLE printer, const std::string& name) {
    memory_.resize(std::max(memory_.size(), usualRoom));
    const auto ask = [&](DWORD& needed, DWORD& count) {
        ::SetLastError(ERROR_SUCCESS);
        return calls.enumJobs(printer, 0, allJobs, 2, memory_.data(), static_cast<DWORD>(memory_.size()), &needed,
                              &count) != FALSE;
    };
    DWORD needed = 0;
    DWORD count = 0;
    while (!ask(needed, count)) {
        const DWORD code = ::GetLastError();
        if (code == ERROR_SUCCESS) {
            return {};
        }
        if (code != ERROR_INSUFFICIENT_BUFFER || needed <= memory_.size()) {
            throw failure(code, name);
        }
        memory_.resize(needed + needed / 4);  // some more may come meanwhile
    }
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    std::vector<platform::PrintJob> jobs;
    const std::span records(reinterpret_cast<const JOB_INFO_2W*>(memory_.data()), count);
    std::transform(records.begin(), records.end(), std::back_inserter(jobs),
                   [&](const JOB_INFO_2W& record) { return jobOf(record, now); });
    return jobs;
}

}  // namespace platform_windows::print
