// How far a job is, for somebody who watches it at a terminal.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "report/job_progress.h"
#include "report/look_pace.h"
#include "session/session.h"

namespace startup {

// A line that begins after a second, is written over ten times a second at most, and ends as one that says how many
// pages were printed in what time. Nothing where nobody watches.
class ProgressLine {
public:
    // The session is borrowed.
    explicit ProgressLine(session::Session& session);

    // To be told of the job's progress.
    report::JobProgress& progress() { return progress_; }

    // To be called often while the job goes on.
    void look();

    // The job has ended; whether it was printed.
    void end(bool printed);

private:
    std::int64_t now() { return session_.platform.system.elapsedMilliseconds(); }
    std::string text(std::int64_t at);
    std::string number(std::size_t value) const;

    session::Session& session_;
    report::JobProgress progress_;
    const bool watched_;
    const std::int64_t begun_;
    report::LookPace pace_;
    std::optional<std::int64_t> shownAt_;
    std::optional<std::int64_t> firstPageAt_;
};

}  // namespace startup
