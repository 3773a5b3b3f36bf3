// What the messenger waits for, all of it at once (epoll).
#pragma once

#include <chrono>
#include <vector>

#include "platform/linux/file_descriptor.h"
#include "platform/messenger_system.h"

namespace platform_linux::messenger {

// Something with a descriptor that there is something to read from now and then.
class EventSource {
public:
    virtual ~EventSource() = default;

    // Reads it, and tells what it means.
    virtual void take(std::vector<platform::MessengerEvent>& events) = 0;
};

class EventQueue {
public:
    // Throws runtime::Error where the system has no room for it.
    EventQueue();

    void add(int descriptor, EventSource& source);
    // No source may go before this, nor while take() of another one runs.
    void remove(int descriptor) noexcept;

    // Those with something to read, waiting for one no longer than so long.
    std::vector<EventSource*> wait(std::chrono::milliseconds atMost);

private:
    FileDescriptor queue_;
};

}  // namespace platform_linux::messenger
