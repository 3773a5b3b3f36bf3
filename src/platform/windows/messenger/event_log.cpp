#include "platform/windows/messenger/event_log.h"

#include "platform/windows/files.h"
#include "platform/windows/places.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_settings_store.h"

namespace platform_windows::messenger {

namespace {

constexpr const wchar_t* source = L"KRVWinPrBote";
// The one text of the program's table of messages: the line itself.
constexpr DWORD lineItself = 1;

WORD typeOf(platform::MessengerSystem::Severity severity) {
    switch (severity) {
        case platform::MessengerSystem::Severity::information:
            return EVENTLOG_INFORMATION_TYPE;
        case platform::MessengerSystem::Severity::warning:
            return EVENTLOG_WARNING_TYPE;
        case platform::MessengerSystem::Severity::error:
            break;
    }
    return EVENTLOG_ERROR_TYPE;
}

}  // namespace

void registerEventSource() {
    const std::string key = R"(SYSTEM\CurrentControlSet\Services\EventLog\Application\)" + narrow(source);
    WindowsSettingsStore().setText(platform::SettingsRoot::localMachine, key, "EventMessageFile",
                                   shownPath(programFile()));
}

EventLog::~EventLog() {
    if (source_ != nullptr) {
        ::DeregisterEventSource(source_);
    }
}

void EventLog::write(platform::MessengerSystem::Severity severity, const std::string& line) {
    if (source_ == nullptr) {
        registerEventSource();
        source_ = ::RegisterEventSourceW(nullptr, source);
    }
    if (source_ != nullptr) {
        const std::wstring text = widen(line);
        const wchar_t* texts = text.c_str();
        ::ReportEventW(source_, typeOf(severity), 0, lineItself, nullptr, 1, 0, &texts, nullptr);
    }
}

}  // namespace platform_windows::messenger
