// The system's print service.
#pragma once

#include <functional>

#include "platform/spooler.h"

namespace platform_windows::print {

inline constexpr unsigned serviceLimit = 5'000;  // milliseconds

// Whether the service "Spooler" has been started, as the system's management service says; stopped where that one does
// not know.
platform::ServiceState spoolerServiceState() noexcept;

// The answer to a question that may hang, in a call of the system that nothing ends: it is asked on a thread of its
// own, which is left behind where it does not answer within so many milliseconds (silent). The question takes with it
// what it needs.
platform::ServiceState answerWithin(unsigned limit, std::function<platform::ServiceState()> question);

}  // namespace platform_windows::print
