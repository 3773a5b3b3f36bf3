// How often somebody who shows a job's progress looks at the clock.
#pragma once

#include <cstdint>

#include "report/job_progress.h"

namespace report {

// A job calls after each piece of text, millions of times a second; looking at the clock each time would cost more than
// the text. So while calls follow each other quickly most of them are let pass.
class LookPace {
public:
    // Whether to look now.
    bool isDue(const JobProgress& progress) {
        constexpr int callsOfAPage = 16;
        calls_ += progress.page() == page_ ? 1 : callsOfAPage;
        page_ = progress.page();
        // What calls while it waits for a printer does so a few times a second.
        return calls_ >= pause_ || progress.stretch() != Stretch::page;
    }

    // What the clock said, in milliseconds.
    void looked(std::int64_t now) {
        constexpr std::int64_t slow = 10;
        constexpr int quickCalls = 256;
        pause_ = now - lookedAt_ < slow ? quickCalls : 1;
        lookedAt_ = now;
        calls_ = 0;
    }

private:
    std::uint32_t page_ = 0;
    int calls_ = 0;
    int pause_ = 1;
    std::int64_t lookedAt_ = 0;
};

}  // namespace report
