#include "platform/linux/crash/stack_walk.h"

#include <dlfcn.h>
#include <ucontext.h>
#include <unwind.h>

namespace platform_linux::crash {

namespace {

using platform::crash::Trace;

struct Walk {
    Trace* trace;
    std::size_t without;  // innermost calls that are left out
    bool fromSignal;      // those before a signal came are left out, too
};

_Unwind_Reason_Code visit(_Unwind_Context* context, void* argument) {
    Walk& walk = *static_cast<Walk*>(argument);
    int isExact = 0;
    const std::uintptr_t address = _Unwind_GetIPInfo(context, &isExact);
    if (walk.fromSignal && isExact == 0) {
        return _URC_NO_REASON;
    }
    walk.fromSignal = false;
    if (walk.without > 0) {
        --walk.without;
    } else if (address != 0) {
        walk.trace->add(address, isExact != 0);
    }
    return _URC_NO_REASON;
}

bool isCode(std::uintptr_t address) noexcept {
    dl_find_object found{};
    // NOLINTNEXTLINE(performance-no-int-to-ptr): it is one
    return ::_dl_find_object(reinterpret_cast<void*>(address), &found) == 0;
}

struct Registers {
    greg_t* instruction;
    greg_t* stack;
};

Registers registersOf(ucontext_t& context) noexcept {
    return {&context.uc_mcontext.gregs[REG_RIP], &context.uc_mcontext.gregs[REG_RSP]};
}

// A call of what is no code has left the way back on top of the stack.
void returnFromNowhere(ucontext_t& context, Trace& trace) noexcept {
    const Registers registers = registersOf(context);
    const auto instruction = static_cast<std::uintptr_t>(*registers.instruction);
    if (!isCode(instruction)) {
        trace.add(instruction, true);
        // NOLINTNEXTLINE(performance-no-int-to-ptr): it is one
        *registers.instruction = *reinterpret_cast<const greg_t*>(*registers.stack);
        *registers.stack += sizeof(greg_t);
    }
}

}  // namespace

void walkInterruptedStack(void* context, Trace& trace) noexcept {
    returnFromNowhere(*static_cast<ucontext_t*>(context), trace);
    Walk walk{&trace, 0, true};
    _Unwind_Backtrace(visit, &walk);
}

[[gnu::noinline]] void walkOwnStack(Trace& trace) noexcept {
    constexpr std::size_t thisOneAndItsCaller = 2;
    Walk walk{&trace, thisOneAndItsCaller, false};
    _Unwind_Backtrace(visit, &walk);
}

std::uintptr_t stackPointerOf(const void* context) noexcept {
    return static_cast<std::uintptr_t>(static_cast<const ucontext_t*>(context)->uc_mcontext.gregs[REG_RSP]);
}

}  // namespace platform_linux::crash
