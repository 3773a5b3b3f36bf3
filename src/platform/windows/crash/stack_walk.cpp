#include "platform/windows/crash/stack_walk.h"

#include <utility>

namespace platform_windows::crash {

namespace {

using platform::crash::Trace;

// NOLINTNEXTLINE(performance-no-int-to-ptr): addresses come from registers
std::uintptr_t wordAt(std::uintptr_t address) noexcept { return *reinterpret_cast<const std::uintptr_t*>(address); }

// NT_TIB::StackBase of the calling thread. The compiler warns of NtCurrentTeb(), which reads from the address 0 of a
// segment.
std::uintptr_t stackEnd() noexcept {
    std::uintptr_t end = 0;
#ifdef __x86_64__
    asm("movq %%gs:8, %0" : "=r"(end));
#else
    asm("movl %%fs:4, %0" : "=r"(end));
#endif
    return end;
}

#ifdef __x86_64__

std::uintptr_t stackPlace(const CONTEXT& context) noexcept { return context.Rsp; }

RUNTIME_FUNCTION* functionAt(DWORD64 place, DWORD64& base) noexcept {
    return ::RtlLookupFunctionEntry(place, &base, nullptr);
}

// Out of code that says nothing of itself: it keeps nothing on the stack, or a word or two, as what makes room for
// large frames does (and overflows the stack there); or it is no code at all, called through a pointer that leads
// nowhere.
bool stepOutOfLeaf(CONTEXT& context, const StackRange& stack) noexcept {
    constexpr std::size_t mostWords = 3;
    if (!stack.holds(context.Rsp, mostWords)) {
        return false;
    }
    std::size_t kept = 0;
    DWORD64 base = 0;
    while (kept < mostWords && functionAt(wordAt(context.Rsp + kept * sizeof(void*)), base) == nullptr) {
        ++kept;
    }
    kept = kept < mostWords ? kept : 0;
    context.Rip = wordAt(context.Rsp + kept * sizeof(void*));
    context.Rsp += (kept + 1) * sizeof(void*);
    return true;
}

// Goes on to the calling routine; whether there is one.
bool stepOut(CONTEXT& context, const StackRange& stack, bool innermost) noexcept {
    const std::uintptr_t before = context.Rsp;
    DWORD64 base = 0;
    if (RUNTIME_FUNCTION* const function = functionAt(context.Rip, base); function != nullptr) {
        void* data = nullptr;
        DWORD64 frame = 0;
        ::RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &data, &frame, nullptr);
    } else if (!innermost || !stepOutOfLeaf(context, stack)) {
        return false;
    }
    return context.Rip != 0 && context.Rsp > before && context.Rsp <= stack.end;
}

void walk(CONTEXT& context, const StackRange& stack, Trace& trace, bool exact, std::size_t without) noexcept {
    bool innermost = true;
    do {
        if (without > 0) {
            --without;
        } else {
            trace.add(context.Rip, exact && innermost);
        }
    } while (stepOut(context, stack, std::exchange(innermost, false)));
}

#else

std::uintptr_t stackPlace(const CONTEXT& context) noexcept { return context.Esp; }

bool isCode(std::uintptr_t address) noexcept {
    constexpr DWORD executable = PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
    MEMORY_BASIC_INFORMATION pages{};
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return ::VirtualQuery(reinterpret_cast<const void*>(address), &pages, sizeof(pages)) != 0 &&
           pages.State == MEM_COMMIT && (pages.Protect & executable) != 0;
}

#endif

}  // namespace

StackRange stackOf(const CONTEXT& context) noexcept { return {stackPlace(context), stackEnd()}; }

std::size_t stackLeft() noexcept {
    MEMORY_BASIC_INFORMATION pages{};
    const auto here = reinterpret_cast<std::uintptr_t>(&pages);
    return ::VirtualQuery(&pages, &pages, sizeof(pages)) != 0
               ? here - reinterpret_cast<std::uintptr_t>(pages.AllocationBase)
               : 0;
}

void walkFrames(std::uintptr_t frame, const StackRange& stack, Trace& trace, std::size_t without) noexcept {
    while (stack.holds(frame, 2)) {
        const std::uintptr_t caller = wordAt(frame + sizeof(void*));
        if (caller == 0) {
            return;
        }
        if (without > 0) {
            --without;
        } else {
            trace.add(caller);
        }
        const std::uintptr_t next = wordAt(frame);
        if (next <= frame) {
            return;
        }
        frame = next;
    }
}

#ifdef __x86_64__

void walkStack(const CONTEXT& context, const StackRange& stack, Trace& trace) noexcept {
    CONTEXT place = context;
    walk(place, stack, trace, true, 0);
}

void walkOwnStack(Trace& trace, std::size_t without) noexcept {
    CONTEXT place{};
    ::RtlCaptureContext(&place);
    walk(place, stackOf(place), trace, false, without + 1);
}

#else

void walkStack(const CONTEXT& context, const StackRange& stack, Trace& trace) noexcept {
    trace.add(context.Eip, true);
    if (!isCode(context.Eip) && stack.holds(context.Esp, 1)) {
        // Called through a pointer that leads nowhere: there is no frame of it yet.
        trace.add(wordAt(context.Esp));
    }
    walkFrames(context.Ebp, stack, trace, 0);
}

void walkOwnStack(Trace& trace, std::size_t without) noexcept {
    const auto frame = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    walkFrames(frame, {frame, stackEnd()}, trace, without);
}

#endif

}  // namespace platform_windows::crash
