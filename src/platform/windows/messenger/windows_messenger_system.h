// The port MessengerSystem on Windows.
#pragma once

#include <map>
#include <optional>

#include "platform/messenger_system.h"
#include "platform/windows/handle.h"
#include "platform/windows/messenger/event_log.h"
#include "platform/windows/messenger/event_port.h"
#include "platform/windows/messenger/far_folders.h"
#include "platform/windows/messenger/started_program.h"

namespace platform_windows::messenger {

// Folders must not outlive it.
class WindowsMessengerSystem final : public platform::MessengerSystem {
public:
    std::unique_ptr<platform::OrderFolder> open(const std::string& path) override;

    // The first call makes the process the messenger of the user's session, where its command line says nothing else.
    std::vector<platform::MessengerEvent> wait(std::chrono::milliseconds atMost) override;

    platform::ProgramId start(const std::string& program, const platform::OrderFolder& folder,
                              const std::string& tail) override;
    std::uint32_t processNumber(platform::ProgramId program) override;
    std::unique_ptr<platform::SettingsStore> settings() override;

    // In the event log, and on standard error where whoever started the messenger has asked for that.
    void log(Severity severity, const std::string& line) noexcept override;
    void notify(const std::string& text) noexcept override;
    void tell(const std::string& text) override;
    std::string identity() override;
    std::string startWithSession(bool on) override;

private:
    void take(const EventPort::Entry& entry, std::vector<platform::MessengerEvent>& events);
    void takeSignal(const EventPort::Entry& entry, std::vector<platform::MessengerEvent>& events);

    EventPort port_;
    FarFolders farFolders_;
    std::map<platform::ProgramId, StartedProgram> programs_;
    platform::ProgramId lastProgram_ = 0;
    bool waited_ = false;
    KernelHandle end_;
    std::optional<SignalWait> endWait_;
    EventLog eventLog_;
};

}  // namespace platform_windows::messenger
