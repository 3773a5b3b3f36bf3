#include "joblist/job_run.h"

#include <algorithm>

#include "platform/spooler_error.h"
#include "runtime/utf8.h"

namespace joblist {

void JobRun::work(platform::System& system, int milliseconds) {
    const std::int64_t start = system.elapsedMilliseconds();
    do {
        actOnNext();
    } while (!done() && system.elapsedMilliseconds() - start < milliseconds);
}

void JobRun::actOnNext() {
    if (done()) {
        return;
    }
    const printer::CPrinterJob& job = jobs_[next_++];
    try {
        action_(job);
    } catch (const platform::SpoolerError& error) {
        refused_.push_back("„" + runtime::shown(job.Document()) + "“:\r\n" +
                           (error.detail().empty() ? error.message() : error.detail()));
        next_ = error.mayPass() ? jobs_.size() : next_;
    }
}

std::string JobRun::progress() const {
    return std::to_string(next_) + " von " + std::to_string(jobs_.size()) + " Aufträgen …";
}

std::string JobRun::refusals() const {
    constexpr std::size_t most = 5;
    std::string text;
    for (std::size_t i = 0; i < std::min(refused_.size(), most); ++i) {
        text += (i > 0 ? "\r\n\r\n" : "") + refused_[i];
    }
    if (refused_.size() > most) {
        text += "\r\n\r\nEbenso " + std::to_string(refused_.size() - most) + " weitere Aufträge.";
    }
    return text;
}

}  // namespace joblist
