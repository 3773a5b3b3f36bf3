// From where an exception was thrown last. The program has a __cxa_throw() of its own, which notes it before the real
// one: when nobody catches an exception, or somebody far out, its stack may be gone.
#pragma once

#include "platform/crash/trace.h"

namespace platform_linux::crash {

// That of the calling thread; empty where another thread has thrown after it, or none was thrown.
platform::crash::Trace lastThrow() noexcept;

}  // namespace platform_linux::crash
