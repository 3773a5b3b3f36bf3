// The one queue of what happens around the messenger.
#pragma once

#include <windows.h>

#include <chrono>
#include <optional>

#include "platform/windows/handle.h"

namespace platform_windows::messenger {

// A completion port.
class EventPort {
public:
    enum class Signal : DWORD { completionWritten, programEnded, stop };

    // A request to the system that is done, with what it brought, or a signal and whose it is.
    struct Entry {
        OVERLAPPED* request = nullptr;
        DWORD bytes = 0;
        DWORD error = 0;
        Signal signal = Signal::stop;
        ULONG_PTR key = 0;
    };

    EventPort();

    // Requests on the file come here from now on; a system error code.
    DWORD attach(HANDLE file) const noexcept;
    void post(Signal signal, ULONG_PTR key) const noexcept;
    std::optional<Entry> next(std::chrono::milliseconds atMost) const noexcept;

private:
    KernelHandle port_;
};

// Posts a signal once, when the object (an event, a process) is signalled, as long as it lives itself. Any number of
// them can be there.
class SignalWait {
public:
    SignalWait(HANDLE object, const EventPort& port, EventPort::Signal signal, ULONG_PTR key);
    SignalWait(const SignalWait&) = delete;
    SignalWait& operator=(const SignalWait&) = delete;
    ~SignalWait();

private:
    static void CALLBACK post(void* self, BOOLEAN) noexcept;

    const EventPort& port_;
    EventPort::Signal signal_;
    ULONG_PTR key_;
    HANDLE wait_ = nullptr;
};

}  // namespace platform_windows::messenger
