// The debug log: one line for each step of a run, for the support staff who must find out why a job failed.
#pragma once

#include <string>
#include <string_view>

#include "platform/system.h"

namespace session {

// Switched on by the command line; while it is off a call costs one comparison. Every line opens, appends to and
// closes the file, so nothing is lost whatever happens next. The file has no folder: it lies in the directory that is
// current at the time of the call. A file that cannot be written is a runtime::Error for the caller.
class DebugLog {
public:
    static constexpr int ordinary = 0;  // lines of "/DEBUG" and "/DEBUG2"
    static constexpr int details = 2;   // lines of "/DEBUG2" only
    static constexpr std::string_view defaultName = "VORGABE";

    explicit DebugLog(platform::System& system) : system_(system) {}

    bool debugging() const { return debugging_; }
    void debugging(bool on) { debugging_ = on; }
    int level() const { return level_; }
    void level(int level) { level_ = level; }

    bool writes(int lineLevel = ordinary) const { return debugging_ && level_ >= lineLevel; }

    // Writes the text as a line of its own. A name other than "VORGABE" becomes the log's file name from now on.
    void write(std::string_view text, int lineLevel = ordinary, std::string_view name = defaultName);

    // Writes date, time and the parts of a message; the parts are put together only when the line is written.
    template <typename... Parts>
    void line(const Parts&... parts) {
        if (writes()) {
            stamped(joined(parts...), ordinary);
        }
    }
    template <typename... Parts>
    void detail(const Parts&... parts) {
        if (writes(details)) {
            stamped(joined(parts...), details);
        }
    }

private:
    template <typename... Parts>
    static std::string joined(const Parts&... parts) {
        std::string message;
        (message.append(parts), ...);
        return message;
    }

    void stamped(const std::string& message, int lineLevel);

    platform::System& system_;
    bool debugging_ = false;
    int level_ = 0;
    std::string name_;
};

}  // namespace session
