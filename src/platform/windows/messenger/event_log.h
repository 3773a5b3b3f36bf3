// The system's event log: lines of the source "KRVWinPrBote" among those of the applications.
#pragma once

#include <windows.h>

#include <string>

#include "platform/messenger_system.h"

namespace platform_windows::messenger {

// Lets the log show the lines without a remark that it does not know them; only administrators may.
void registerEventSource();

class EventLog {
public:
    EventLog() = default;
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;
    ~EventLog();

    // Nothing is written where the system has no log.
    void write(platform::MessengerSystem::Severity severity, const std::string& line);

private:
    HANDLE source_ = nullptr;
};

}  // namespace platform_windows::messenger
