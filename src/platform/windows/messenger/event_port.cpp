#include "platform/windows/messenger/event_port.h"

#include <algorithm>

#include "platform/windows/system_error.h"

namespace platform_windows::messenger {

EventPort::EventPort() : port_(::CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1)) {
    if (!port_) {
        throwFileError(::GetLastError(), {});
    }
}

DWORD EventPort::attach(HANDLE file) const noexcept {
    return ::CreateIoCompletionPort(file, port_.get(), 0, 0) != nullptr ? 0 : ::GetLastError();
}

void EventPort::post(Signal signal, ULONG_PTR key) const noexcept {
    ::PostQueuedCompletionStatus(port_.get(), static_cast<DWORD>(signal), key, nullptr);
}

std::optional<EventPort::Entry> EventPort::next(std::chrono::milliseconds atMost) const noexcept {
    const auto limit = std::clamp<std::chrono::milliseconds::rep>(atMost.count(), 0, INFINITE - 1);
    Entry entry;
    DWORD number = 0;
    if (::GetQueuedCompletionStatus(port_.get(), &number, &entry.key, &entry.request, static_cast<DWORD>(limit)) == 0) {
        if (entry.request == nullptr) {
            return std::nullopt;
        }
        entry.error = ::GetLastError();
    }
    if (entry.request != nullptr) {
        entry.bytes = number;
    } else {
        entry.signal = static_cast<Signal>(number);
    }
    return entry;
}

SignalWait::SignalWait(HANDLE object, const EventPort& port, EventPort::Signal signal, ULONG_PTR key)
    : port_(port), signal_(signal), key_(key) {
    if (::RegisterWaitForSingleObject(&wait_, object, post, this, INFINITE,
                                      WT_EXECUTEINWAITTHREAD | WT_EXECUTEONLYONCE) == 0) {
        throwFileError(::GetLastError(), {});
    }
}

SignalWait::~SignalWait() {
    // Waits for a signal that is just being posted.
    ::UnregisterWaitEx(wait_, INVALID_HANDLE_VALUE);
}

void CALLBACK SignalWait::post(void* self, BOOLEAN) noexcept {
    const auto* wait = static_cast<const SignalWait*>(self);
    wait->port_.post(wait->signal_, wait->key_);
}

}  // namespace platform_windows::messenger
