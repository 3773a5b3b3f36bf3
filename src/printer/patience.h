// Waiting for a spooler that does not answer and for a printer that takes nothing now.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/spooler.h"
#include "platform/system.h"

namespace printer {

// The time is for all waiting together.
class Patience {
public:
    // None: every error is one at once.
    Patience() = default;

    // The ports are borrowed. What is called meanwhile, some times a second, may end the waiting by an error of its
    // own.
    Patience(platform::Spooler& spooler, platform::System& system, int seconds, std::function<void()> meanwhile);

    // Takes a step, and takes it again while it fails with an error that may pass and there is time left. The last
    // error is the caller's.
    template <typename Step>
    auto during(Step step) -> decltype(step()) {
        while (true) {
            try {
                return step();
            } catch (const platform::SpoolerError& error) {
                if (!error.mayPass() || !waitForAnswer()) {
                    throw;
                }
            }
        }
    }

private:
    bool waitForAnswer();

    platform::Spooler* spooler_ = nullptr;
    platform::System* system_ = nullptr;
    std::int64_t millisecondsLeft_ = 0;
    std::function<void()> meanwhile_;
};

}  // namespace printer
