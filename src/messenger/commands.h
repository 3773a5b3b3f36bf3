// The commands by which a user sets the messenger up. What comes of them is said in sentences, one to a line.
#pragma once

#include <string>
#include <vector>

#include "platform/messenger_system.h"
#include "platform/system.h"

namespace messenger {

// Names folders of hosts, puts KRVWINPR.COM into them, and lets the messenger start with the session. A folder that
// holds a KRVWinPr.exe is refused, because a host would find KRVWINPR.COM instead of it.
std::string switchOn(platform::System& system, platform::MessengerSystem& messengerSystem,
                     const std::vector<std::string>& folders);

// The opposite; without folders the messenger does not start any more, and ends.
std::string switchOff(platform::System& system, platform::MessengerSystem& messengerSystem,
                      const std::vector<std::string>& folders);

// Which folders are named, and who carries out their orders.
std::string status(platform::MessengerSystem& messengerSystem);

std::string usage();
std::string version();

}  // namespace messenger
