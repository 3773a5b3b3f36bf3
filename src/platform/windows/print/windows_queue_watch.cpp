#include "platform/windows/print/windows_queue_watch.h"

#include <utility>

namespace platform_windows::print {

std::unique_ptr<platform::QueueWatch> WindowsQueueWatch::of(const JobCalls& calls, PrinterHandle printer) {
    constexpr DWORD wanted = PRINTER_CHANGE_JOB | PRINTER_CHANGE_PRINTER;
    const HANDLE changes = calls.firstChange(printer.get(), wanted, 0, nullptr);
    if (changes == INVALID_HANDLE_VALUE || changes == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<platform::QueueWatch>(new WindowsQueueWatch(calls, std::move(printer), changes));
}

WindowsQueueWatch::WindowsQueueWatch(JobCalls calls, PrinterHandle printer, HANDLE changes)
    : calls_(std::move(calls)), printer_(std::move(printer)), changes_(changes) {}

WindowsQueueWatch::~WindowsQueueWatch() { calls_.closeChanges(changes_); }

bool WindowsQueueWatch::changed() {
    const bool first = std::exchange(first_, false);
    const DWORD told = ::WaitForSingleObject(changes_, 0);
    if (told == WAIT_TIMEOUT) {
        return first;
    }
    // It stays told where there will be no more of it, as after a restart of the service: then everything may have
    // changed every time.
    DWORD what = 0;
    calls_.nextChange(changes_, &what, nullptr, nullptr);
    return true;
}

}  // namespace platform_windows::print
