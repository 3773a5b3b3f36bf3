// The calls that are under way in a thread, read from its registers and its stack.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "platform/crash/trace.h"

namespace platform_windows::crash {

// From where a thread stands to where its stack began.
struct StackRange {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    // Whether words lie there that belong to a frame.
    bool holds(std::uintptr_t address, std::size_t words) const noexcept {
        return address >= begin && address % sizeof(void*) == 0 && address <= end &&
               end - address >= words * sizeof(void*);
    }
};

// That of the calling thread, from where such a context stands.
StackRange stackOf(const CONTEXT& context) noexcept;

// What is left of the calling thread's stack below where it stands, in bytes.
std::size_t stackLeft() noexcept;

// Adds the calls to a trace, from the innermost one. The context is of an exception: it stands at the instruction that
// raised it. A stack that was overwritten ends the trace, by an exception at the worst.
void walkStack(const CONTEXT& context, const StackRange& stack, platform::crash::Trace& trace) noexcept;

// The same for the calling routine's own callers, without so many of the innermost ones.
void walkOwnStack(platform::crash::Trace& trace, std::size_t without) noexcept;

// With 32 bits: each routine keeps the address of its caller's frame, and behind it that of the instruction to return
// to.
void walkFrames(std::uintptr_t frame, const StackRange& stack, platform::crash::Trace& trace,
                std::size_t without) noexcept;

}  // namespace platform_windows::crash
