// The spooler's notifications of changes in a queue.
#pragma once

#include "platform/print_jobs.h"
#include "platform/windows/print/job_calls.h"

namespace platform_windows::print {

class WindowsQueueWatch final : public platform::QueueWatch {
public:
    // Null where the spooler has no notifications for the printer.
    static std::unique_ptr<platform::QueueWatch> of(const JobCalls& calls, PrinterHandle printer);

    WindowsQueueWatch(const WindowsQueueWatch&) = delete;
    WindowsQueueWatch& operator=(const WindowsQueueWatch&) = delete;
    ~WindowsQueueWatch() override;

    bool changed() override;

private:
    WindowsQueueWatch(JobCalls calls, PrinterHandle printer, HANDLE changes);

    JobCalls calls_;
    PrinterHandle printer_;
    HANDLE changes_;
    std::optional<std::uint64_t> told_;  // when, in milliseconds
};

}  // namespace platform_windows::print
