#include "platform/windows/crash/last_throw.h"

#include <windows.h>

#include <atomic>

#include "platform/windows/crash/stack_walk.h"

namespace platform_windows::crash {

namespace {

constinit platform::crash::Trace trace;
constinit std::atomic<DWORD> thread = 0;
constinit std::atomic_flag busy = ATOMIC_FLAG_INIT;

}  // namespace

[[gnu::noinline]] void noteThrow(std::size_t without) noexcept {
    if (!busy.test_and_set(std::memory_order_acquire)) {
        trace.clear();
        walkOwnStack(trace, without + 1);
        thread = ::GetCurrentThreadId();
        busy.clear(std::memory_order_release);
    }
}

platform::crash::Trace lastThrow() noexcept {
    return thread == ::GetCurrentThreadId() ? trace : platform::crash::Trace();
}

}  // namespace platform_windows::crash
