// Start-up: takes the command line apart, records which program runs where, and starts the one job asked for.
#pragma once

#include "platform/platform.h"

namespace startup::MMain {

// Runs the program from start to end. An error that no job reports itself is shown as the program's last message.
// Never throws; the process's exit code is 0 whatever happens.
void Main(platform::Platform& platform) noexcept;

// What remains of that where it could not even begin, for want of memory: a host that waits for a report is let go.
void giveUp(platform::Platform& platform) noexcept;

}  // namespace startup::MMain
