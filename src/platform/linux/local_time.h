// A moment of the system's clock in the user's local time.
#pragma once

#include <ctime>

#include "runtime/datetime.h"

namespace platform_linux {

runtime::DateTime localTimeOf(const timespec& moment);

}  // namespace platform_linux
