#include "platform/linux/messenger/journal.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <syslog.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/linux/standard_error.h"
#include "platform/messages/unseen_box.h"

namespace platform_linux::messenger {

namespace {

using platform::MessengerSystem;

// By sd-daemon(3) and systemd.exec(5).
int priorityOf(MessengerSystem::Severity severity) {
    switch (severity) {
        case MessengerSystem::Severity::information:
            return LOG_INFO;
        case MessengerSystem::Severity::warning:
            return LOG_WARNING;
        default:
            return LOG_ERR;
    }
}

bool isJournal(const struct stat& output) {
    const char* journal = ::getenv("JOURNAL_STREAM");
    return journal != nullptr && journal == std::to_string(output.st_dev) + ":" + std::to_string(output.st_ino);
}

bool leadsNowhere(const struct stat& output) {
    const dev_t nowhere = ::makedev(1, 3);  // /dev/null
    return S_ISCHR(output.st_mode) && output.st_rdev == nowhere;
}

}  // namespace

Journal::Journal() {
    struct stat output {};
    if (::fstat(STDERR_FILENO, &output) != 0 || leadsNowhere(output)) {
        place_ = Place::systemLog;
        ::openlog("KRVWinPrBote", LOG_PID, LOG_USER);
    } else if (isJournal(output)) {
        place_ = Place::journal;
    }
}

void Journal::write(MessengerSystem::Severity severity, const std::string& line) noexcept {
    try {
        const std::string text = platform::messages::oneLine(line);
        if (place_ == Place::systemLog) {
            ::syslog(priorityOf(severity), "%s", text.c_str());
            return;
        }
        const std::string mark = place_ == Place::journal ? "<" + std::to_string(priorityOf(severity)) + ">" : "";
        writeToStandardError(mark + text + "\n");
    } catch (...) {
        writeToStandardError("Nicht genügend Speicher\n");
    }
}

}  // namespace platform_linux::messenger
