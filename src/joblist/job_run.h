// Something done with some jobs of a queue, one after another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/system.h"
#include "printer/CPrinterJob.h"

namespace joblist {

using JobAction = std::function<void(const printer::CPrinterJob&)>;

// What the spooler refuses for one job is kept, and the others follow; where it does not answer, none follows.
class JobRun {
public:
    JobRun(JobAction action, std::vector<printer::CPrinterJob> jobs)
        : action_(std::move(action)), jobs_(std::move(jobs)) {}

    // Goes on for about so many milliseconds.
    void work(platform::System& system, int milliseconds);

    bool done() const { return next_ >= jobs_.size(); }
    // "3 von 400 Aufträgen …"
    std::string progress() const;
    // What was refused, for a message box; empty where nothing was.
    std::string refusals() const;

private:
    void actOnNext();

    JobAction action_;
    std::vector<printer::CPrinterJob> jobs_;
    std::size_t next_ = 0;
    std::vector<std::string> refused_;
};

}  // namespace joblist
