// The programs that the messenger has started.
#pragma once

#include <sys/types.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/file_descriptor.h"
#include "platform/linux/messenger/event_queue.h"
#include "platform/messenger_system.h"

namespace platform_linux::messenger {

// Who owns it hears of SIGCHLD.
class StartedPrograms {
public:
    // The queue must outlive it.
    explicit StartedPrograms(EventQueue& queue) : queue_(queue) {}

    // In a session of its own, so that neither the messenger's terminal nor its end reaches it. Throws runtime::Error.
    platform::ProgramId start(const std::string& program, const std::string& folder, const std::string& tail);

    // 0 for one that has ended.
    pid_t processNumber(platform::ProgramId program) const;

    // Those that have ended since the last call; whatever a program started itself may still run. To be called behind
    // take() of all sources.
    void takeEnded(std::vector<platform::MessengerEvent>& events);

private:
    class Program final : public EventSource {
    public:
        Program(platform::ProgramId id, FileDescriptor word, EventQueue& queue);
        Program(const Program&) = delete;
        Program& operator=(const Program&) = delete;
        ~Program() override;

        pid_t number() const { return number_; }
        void number(pid_t number) { number_ = number; }
        // The word of the program that it has written the completion file.
        void take(std::vector<platform::MessengerEvent>& events) override;

    private:
        platform::ProgramId id_;
        pid_t number_ = 0;
        FileDescriptor word_;
        EventQueue& queue_;
        bool told_ = false;
    };

    EventQueue& queue_;
    std::map<platform::ProgramId, std::unique_ptr<Program>> programs_;
    platform::ProgramId last_ = 0;
};

}  // namespace platform_linux::messenger
