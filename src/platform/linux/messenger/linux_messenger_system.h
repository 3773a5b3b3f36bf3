// The port MessengerSystem on Linux.
#pragma once

#include <chrono>

#include "platform/linux/linux_dialogs.h"
#include "platform/linux/messenger/event_queue.h"
#include "platform/linux/messenger/journal.h"
#include "platform/linux/messenger/signals.h"
#include "platform/linux/messenger/started_programs.h"
#include "platform/messenger_system.h"

namespace platform_linux::messenger {

// Must outlive its folders. Where it can be told that something happened in them, it is, by inotify; the value
// "Ereignisse" of the settings, 0, turns that off. Messages on the desktop stay there until somebody has seen them: a
// few are shown in a minute, then that there are more.
class LinuxMessengerSystem final : public platform::MessengerSystem {
public:
    std::unique_ptr<platform::OrderFolder> open(const std::string& path) override;
    std::vector<platform::MessengerEvent> wait(std::chrono::milliseconds atMost) override;
    platform::ProgramId start(const std::string& program, const platform::OrderFolder& folder,
                              const std::string& tail) override;
    std::uint32_t processNumber(platform::ProgramId program) override;
    std::unique_ptr<platform::SettingsStore> settings() override;
    void log(Severity severity, const std::string& line) noexcept override;
    void notify(const std::string& text) noexcept override;
    void tell(const std::string& text) override;
    std::string identity() override;
    std::string startWithSession(bool on) override;

private:
    void noteUnwatched(int error);
    void seekDesktop();

    EventQueue queue_;
    Signals signals_{queue_};
    StartedPrograms programs_{queue_};
    Journal journal_;
    LoadedDesktop desktop_;
    LinuxDialogs dialogs_{desktop_};
    bool unwatchedNoted_ = false;
    std::chrono::steady_clock::time_point desktopSought_;
    std::chrono::steady_clock::time_point noticesSince_;
    int notices_ = 0;
};

}  // namespace platform_linux::messenger
