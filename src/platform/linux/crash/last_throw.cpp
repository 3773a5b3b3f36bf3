#include "platform/linux/crash/last_throw.h"

#include <dlfcn.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <typeinfo>

#include "platform/linux/crash/stack_walk.h"

namespace platform_linux::crash {

namespace {

constinit platform::crash::Trace noted;
constinit std::atomic<pid_t> thrower = 0;  // thread

void noteThrow() noexcept {
    thrower.store(0, std::memory_order_relaxed);
    noted.clear();
    walkOwnStack(noted);
    thrower.store(::gettid(), std::memory_order_relaxed);
}

using Throw = void (*)(void*, std::type_info*, void (*)(void*));

Throw realThrow() noexcept {
    static constinit std::atomic<Throw> real = nullptr;
    Throw found = real.load(std::memory_order_relaxed);
    if (found == nullptr) {
        found = reinterpret_cast<Throw>(::dlsym(RTLD_NEXT, "__cxa_throw"));
        real.store(found, std::memory_order_relaxed);
    }
    return found;
}

}  // namespace

platform::crash::Trace lastThrow() noexcept {
    return thrower.load(std::memory_order_relaxed) == ::gettid() ? noted : platform::crash::Trace();
}

}  // namespace platform_linux::crash

// Modules and libraries throw by it, too: a name of the program goes before that of a library.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): that is what compilers call
extern "C" [[gnu::visibility("default"), noreturn]] void __cxa_throw(void* exception, std::type_info* type,
                                                                     void (*destroy)(void*)) {
    platform_linux::crash::noteThrow();
    if (const auto real = platform_linux::crash::realThrow(); real != nullptr) {
        real(exception, type, destroy);
    }
    std::abort();
}
