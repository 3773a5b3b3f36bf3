// The reports of errors in the log "KRVWinPr.ERR", and which of them somebody has seen.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "session/session.h"

namespace errorreport {

struct ErrorReport {
    std::string text;  // from its first to its last marked line
    std::string mark;  // which one it is
};

// The newest report, unless it is the one that was seen last. Nothing where there is none, or the log cannot be read.
std::optional<ErrorReport> newestUnseen(session::Session& session);

// Keeps in the settings that this one was seen.
void markSeen(session::Session& session, const ErrorReport& report);

// What stands behind a label of the report, "Druckdatei"; empty where it has none.
std::string valueOf(const ErrorReport& report, std::string_view label);

// What has happened, and what became of the job and of the host, in sentences for the user.
std::string whatHappened(const ErrorReport& report);
std::string whatBecame(const ErrorReport& report);

}  // namespace errorreport
