#include "platform/windows/print/windows_queue_watch.h"

#include <utility>

#include "platform/windows/newer_functions.h"

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
    // A spooler that was restarted may have forgotten who wants to know.
    constexpr std::uint64_t longestSilence = 30'000;
    const std::uint64_t now = evenMilliseconds();
    if (::WaitForSingleObject(changes_, 0) != WAIT_TIMEOUT) {
        DWORD what = 0;
        calls_.nextChange(changes_, &what, nullptr, nullptr);
    } else if (told_ && now - *told_ < longestSilence) {
        return false;
    }
    told_ = now;
    return true;
}

}  // namespace platform_windows::print
