// Port: reports of errors that nobody has trapped, written into the log file "KRVWinPr.ERR" in the user's own data.
//
// Crashes (a signal, a structured exception, std::terminate) are reported by the adapter itself from the moment on at
// which main() has prepared it: it writes the report, lets a host go that waits (Activity::hostWaits), and where
// somebody sits there starts the program once more to offer the report. The process then ends with exit code 0.
#pragma once

#include <cstdint>
#include <string>

#include "platform/activity.h"

namespace platform {

class ErrorReports {
public:
    virtual ~ErrorReports() = default;

    virtual Activity& activity() noexcept = 0;

    // Reports an error that has left every routine, with the trace of where the exception was thrown last, and offers
    // it like a crash. Never fails: what cannot be written is told on standard error.
    virtual void untrapped(std::int32_t number, const std::string& description) noexcept = 0;

    // The log file's path; empty where the user has no place for it. It need not be there.
    virtual std::string logFile() = 0;

    // Whether this process was started to offer the newest report, and for nothing else.
    virtual bool startedToOffer() noexcept { return false; }
};

}  // namespace platform
