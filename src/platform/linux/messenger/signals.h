// Signals to the messenger, read like anything else that it waits for.
#pragma once

#include <csignal>
#include <utility>
#include <vector>

#include "platform/linux/file_descriptor.h"
#include "platform/linux/messenger/event_queue.h"

namespace platform_linux::messenger {

// SIGTERM, SIGINT and SIGHUP stop the messenger, but for those that whoever started it has let be ignored.
class Signals final : public EventSource {
public:
    explicit Signals(EventQueue& queue);
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;
    ~Signals() override;

    void take(std::vector<platform::MessengerEvent>& events) override;

    // Whether a process has ended since the last call.
    bool childEnded() noexcept { return std::exchange(childEnded_, false); }

private:
    EventQueue& queue_;
    sigset_t before_{};
    FileDescriptor signals_;
    bool childEnded_ = false;
};

}  // namespace platform_linux::messenger
