// The messenger that belongs to the user's session: started with it, one at a time.
#pragma once

#include "platform/windows/handle.h"

namespace platform_windows::messenger {

// Says that this process is it, as long as the handle lives: an event that is signalled where it is to end. None for a
// process with a command line, which does something else; throws runtime::Error.
KernelHandle beSessionsMessenger();

// From now on with every session of the user, and now, where there is none yet; throws runtime::Error.
void startWithSessions();

// No longer, and the one that runs ends; throws runtime::Error where it does not.
void endWithSessions();

}  // namespace platform_windows::messenger
