// What the messenger writes down: in the user's journal, on a terminal, in the system's log.
#pragma once

#include <string>

#include "platform/messenger_system.h"

namespace platform_linux::messenger {

// Standard error where it leads anywhere, with the severity in front of each line where that is the journal; otherwise
// syslog.
class Journal {
public:
    Journal();

    void write(platform::MessengerSystem::Severity severity, const std::string& line) noexcept;

private:
    enum class Place { journal, standardError, systemLog };
    Place place_ = Place::standardError;
};

}  // namespace platform_linux::messenger
