// Why std::terminate was called.
#pragma once

#include <cstdint>

#include "platform/crash/fixed_text.h"

namespace platform::crash {

// For its handler: the exception that nobody has caught, where there is one. Its number as a run-time error, 51
// (internal error) for any that is none. Only here memory may be taken, for the message of a run-time error.
std::int32_t describeTermination(FixedText& text) noexcept;

}  // namespace platform::crash
