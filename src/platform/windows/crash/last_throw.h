// From where an exception was thrown last. __cxa_throw() of the program notes it, by the linker's option --wrap
// (throw_note.cpp): when nobody catches an exception, or somebody far out, its stack may be gone.
#pragma once

#include <cstddef>

#include "platform/crash/trace.h"

namespace platform_windows::crash {

// Notes the calls that are under way in the calling thread, without so many of the innermost ones.
void noteThrow(std::size_t without) noexcept;

// That of the calling thread; empty where another thread has thrown after it, or none was thrown.
platform::crash::Trace lastThrow() noexcept;

}  // namespace platform_windows::crash
