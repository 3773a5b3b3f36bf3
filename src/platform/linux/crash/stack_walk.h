// The calls that are under way in the calling thread, read by the unwind tables.
#pragma once

#include <cstdint>

#include "platform/crash/trace.h"

namespace platform_linux::crash {

// Adds the calls of what a signal has interrupted, from the innermost one; to be called from its handler, with the
// handler's context, which is not to be returned to any more. A stack that was overwritten ends the trace, by another
// signal at the worst.
void walkInterruptedStack(void* context, platform::crash::Trace& trace) noexcept;

// The same for the callers of the caller.
void walkOwnStack(platform::crash::Trace& trace) noexcept;

// Where the stack stood when a signal came; 0 where that is not known.
std::uintptr_t stackPointerOf(const void* context) noexcept;

}  // namespace platform_linux::crash
