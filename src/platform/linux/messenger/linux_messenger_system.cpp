#include "platform/linux/messenger/linux_messenger_system.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <optional>
#include <utility>

#include "messenger/messenger_settings.h"
#include "platform/linux/c_string.h"
#include "platform/linux/file_calls.h"
#include "platform/linux/linux_error.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/messenger/file_system.h"
#include "platform/linux/messenger/linux_order_folder.h"
#include "platform/linux/messenger/session.h"
#include "platform/linux/paths.h"

namespace platform_linux::messenger {

namespace {

// Without a separator at its end, but for the root.
std::string absolute(const std::string& path) {
    std::string result = path;
    if (!path.starts_with('/')) {
        const CString here(::getcwd(nullptr, 0));
        result = (here ? std::string(here.get()) : ".") + "/" + path;
    }
    return result.substr(0, std::max<std::size_t>(result.find_last_not_of('/') + 1, 1));
}

}  // namespace

std::unique_ptr<platform::OrderFolder> LinuxMessengerSystem::open(const std::string& path) {
    auto folder = std::make_unique<LinuxOrderFolder>(absolute(path), identity(), queue_);
    if (folder->watchError() != 0) {
        noteUnwatched(folder->watchError());
    }
    if (isShared(folder->path()) || !::messenger::readSettings(*settings()).trustsReports) {
        folder->distrustReports();
    }
    return folder;
}

void LinuxMessengerSystem::noteUnwatched(int error) {
    if (!std::exchange(unwatchedNoted_, true)) {
        log(Severity::warning,
            "Das System meldet nicht, was in den Ordnern geschieht (" + errorReason(error) +
                "); sie werden stattdessen immer wieder angesehen. Abhilfe: fs.inotify.max_user_instances und "
                "fs.inotify.max_user_watches in /etc/sysctl.conf erhöhen.");
    }
}

std::vector<platform::MessengerEvent> LinuxMessengerSystem::wait(std::chrono::milliseconds atMost) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + atMost;
    std::vector<platform::MessengerEvent> events;
    do {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        for (EventSource* source : queue_.wait(left)) {
            source->take(events);
        }
        if (signals_.childEnded()) {
            programs_.takeEnded(events);
        }
    } while (events.empty() && Clock::now() < end);
    return events;
}

// The user's systemd takes its time to answer.
void LinuxMessengerSystem::seekDesktop() {
    constexpr std::chrono::seconds pause{30};
    const auto now = std::chrono::steady_clock::now();
    if (now - desktopSought_ > pause) {
        desktopSought_ = now;
        joinDesktop();
    }
}

platform::ProgramId LinuxMessengerSystem::start(const std::string& program, const platform::OrderFolder& folder,
                                                const std::string& tail) {
    seekDesktop();
    return programs_.start(program, folder.path(), tail);
}

std::uint32_t LinuxMessengerSystem::processNumber(platform::ProgramId program) {
    return static_cast<std::uint32_t>(programs_.processNumber(program));
}

std::unique_ptr<platform::SettingsStore> LinuxMessengerSystem::settings() {
    return std::make_unique<LinuxSettingsStore>(LinuxSettingsStore::usualPath());
}

void LinuxMessengerSystem::log(Severity severity, const std::string& line) noexcept { journal_.write(severity, line); }

void LinuxMessengerSystem::notify(const std::string& text) noexcept {
    constexpr int most = 3;
    const auto now = std::chrono::steady_clock::now();
    if (now - noticesSince_ > std::chrono::minutes(1)) {
        noticesSince_ = now;
        notices_ = 0;
    }
    if (++notices_ > most + 1) {
        return;
    }
    try {
        seekDesktop();
        dialogs_.notify(notices_ <= most ? text : "Weitere Meldungen des Boten stehen im Journal (journalctl --user).");
    } catch (...) {
        log(Severity::warning, "Die Meldung ließ sich nicht anzeigen.");
    }
}

void LinuxMessengerSystem::tell(const std::string& text) { writeAll(STDOUT_FILENO, text + "\n"); }

std::string LinuxMessengerSystem::identity() {
    const passwd* user = ::getpwuid(::geteuid());
    std::array<char, HOST_NAME_MAX + 1> machine{};
    ::gethostname(machine.data(), machine.size() - 1);
    return (user != nullptr ? std::string(user->pw_name) : std::to_string(::geteuid())) + " auf " + machine.data() +
           ", Prozess " + std::to_string(::getpid());
}

std::string LinuxMessengerSystem::startWithSession(bool on) { return messenger::startWithSession(on, programFile()); }

}  // namespace platform_linux::messenger
