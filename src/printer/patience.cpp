#include "printer/patience.h"

#include <algorithm>
#include <utility>

namespace printer {

Patience::Patience(platform::Spooler& spooler, platform::System& system, int seconds, std::function<void()> meanwhile)
    : spooler_(&spooler),
      system_(&system),
      millisecondsLeft_(std::int64_t{1000} * seconds),
      meanwhile_(std::move(meanwhile)) {}

bool Patience::waitForAnswer() {
    constexpr std::int64_t pause = 250;
    bool answers = false;
    while (!answers && millisecondsLeft_ > 0) {
        const std::int64_t begin = system_->elapsedMilliseconds();
        system_->sleep(static_cast<int>(std::min(pause, millisecondsLeft_)));
        meanwhile_();
        answers = spooler_->answersAgain();
        millisecondsLeft_ -= system_->elapsedMilliseconds() - begin;
    }
    return answers;
}

}  // namespace printer
