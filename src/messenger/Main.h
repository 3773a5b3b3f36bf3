// The messenger's start: a program of its own, "KRVWinPrBote".
#pragma once

#include "platform/messenger_system.h"
#include "platform/system.h"

namespace messenger {

// Carries out orders until it is told to end, or does what its command line says instead:
//   Ordner...        these folders instead of those in the settings
//   /EIN Ordner...   adds folders to the settings, puts KRVWINPR.COM there, and starts with the user's session from now
//   on /AUS [Ordner...] no longer these folders; without one, no longer at all /STATUS          which folders, and who
//   carries out their orders
// The exit code: 0, or 1 where that failed, which has been told.
int Main(platform::System& system, platform::MessengerSystem& messengerSystem) noexcept;

}  // namespace messenger
