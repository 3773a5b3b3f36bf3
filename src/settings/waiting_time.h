// How long a job waits for a print service that does not answer.
#pragma once

#include "session/session.h"

namespace settings {

// Seconds, 0 to 3600: the value "Wartezeit" of the product's key, 60 where it is not set or no such number.
int waitingSeconds(session::Session& session);

}  // namespace settings
