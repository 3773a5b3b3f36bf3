#include "platform/windows/messenger/windows_messenger_system.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "messenger/messenger_settings.h"
#include "platform/windows/caller.h"
#include "platform/windows/files.h"
#include "platform/windows/messenger/folder_watch.h"
#include "platform/windows/messenger/program_name.h"
#include "platform/windows/messenger/session_start.h"
#include "platform/windows/messenger/windows_order_folder.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/standard_error.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_dialogs.h"
#include "platform/windows/windows_settings_store.h"

namespace platform_windows::messenger {

namespace {

using platform::MessengerEvent;

WindowsOrderFolder::Watching watchingWanted(platform::SettingsStore& settings) {
    return ::messenger::readSettings(settings).trustsReports ? WindowsOrderFolder::Watching::yes
                                                             : WindowsOrderFolder::Watching::no;
}

bool isAbout(const MessengerEvent& event, const platform::OrderFolder* folder) {
    return event.kind == MessengerEvent::Kind::folderChanged && event.folder == folder;
}

}  // namespace

std::unique_ptr<platform::OrderFolder> WindowsMessengerSystem::open(const std::string& path) {
    return std::make_unique<WindowsOrderFolder>(path, port_, farFolders_, watchingWanted(*settings()));
}

std::vector<MessengerEvent> WindowsMessengerSystem::wait(std::chrono::milliseconds atMost) {
    if (!std::exchange(waited_, true)) {
        end_ = beSessionsMessenger();
        if (end_) {
            endWait_.emplace(end_.get(), port_, EventPort::Signal::stop, 0);
        }
    }
    std::vector<MessengerEvent> events;
    const std::uint64_t begin = evenMilliseconds();
    // Much of what happens in a folder is nobody's business.
    const auto left = [&] {
        const std::chrono::milliseconds passed(evenMilliseconds() - begin);
        return events.empty() && passed < atMost ? atMost - passed : std::chrono::milliseconds{0};
    };
    while (const auto entry = port_.next(left())) {
        take(*entry, events);
    }
    return events;
}

void WindowsMessengerSystem::take(const EventPort::Entry& entry, std::vector<MessengerEvent>& events) {
    if (entry.request == nullptr) {
        takeSignal(entry, events);
        return;
    }
    const platform::OrderFolder* folder = FolderWatch::take(entry);
    const bool isNews =
        std::none_of(events.begin(), events.end(), [&](const MessengerEvent& event) { return isAbout(event, folder); });
    if (folder != nullptr && isNews) {
        events.push_back({.kind = MessengerEvent::Kind::folderChanged, .folder = folder, .program = 0, .how = {}});
    }
}

void WindowsMessengerSystem::takeSignal(const EventPort::Entry& entry, std::vector<MessengerEvent>& events) {
    using Kind = MessengerEvent::Kind;
    if (entry.signal == EventPort::Signal::stop) {
        events.push_back({});
        return;
    }
    const auto found = programs_.find(entry.key);
    if (found == programs_.end()) {
        return;
    }
    // The two are noticed in either order.
    if (found->second.takeCompletion()) {
        events.push_back({.kind = Kind::completionWritten, .folder = nullptr, .program = found->first, .how = {}});
    }
    if (entry.signal == EventPort::Signal::programEnded) {
        events.push_back(
            {.kind = Kind::programEnded, .folder = nullptr, .program = found->first, .how = found->second.how()});
        programs_.erase(found);
    }
}

platform::ProgramId WindowsMessengerSystem::start(const std::string& program, const platform::OrderFolder& folder,
                                                  const std::string& tail) {
    const platform::ProgramId id = ++lastProgram_;
    programs_.try_emplace(id, nativePath(program), widen(folder.path()), widen(tail), port_,
                          static_cast<ULONG_PTR>(id));
    return id;
}

std::uint32_t WindowsMessengerSystem::processNumber(platform::ProgramId program) {
    const auto found = programs_.find(program);
    return found != programs_.end() ? found->second.number() : 0;
}

std::unique_ptr<platform::SettingsStore> WindowsMessengerSystem::settings() {
    return std::make_unique<WindowsSettingsStore>();
}

void WindowsMessengerSystem::log(Severity severity, const std::string& line) noexcept {
    try {
        writeToStandardError(encode(widen(std::string(programName) + ": " + line + "\r\n"), CP_ACP));
        eventLog_.write(severity, line);
    } catch (const std::exception&) {
        return;  // out of memory
    }
}

void WindowsMessengerSystem::notify(const std::string& text) noexcept {
    try {
        WindowsDialogs().notify(text);
    } catch (const std::exception&) {
        return;
    }
}

void WindowsMessengerSystem::tell(const std::string& text) {
    if (!tellCaller(text)) {
        WindowsDialogs().messageBox(text, platform::Buttons::ok, platform::Icon::none, programName);
    }
}

std::string WindowsMessengerSystem::identity() { return identityOfProcess(); }

std::string WindowsMessengerSystem::startWithSession(bool on) {
    if (on) {
        registerEventSource();
        startWithSessions();
    } else {
        endWithSessions();
    }
    return {};
}

}  // namespace platform_windows::messenger
