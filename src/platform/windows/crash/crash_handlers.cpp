#include "platform/windows/crash/crash_handlers.h"

#include <windows.h>

#include <csignal>
#include <exception>

#include "platform/windows/crash/crash_report.h"
#include "platform/windows/crash/stack_walk.h"
#include "platform/windows/newer_functions.h"

namespace platform_windows::crash {

namespace {

// What the C++ run-time library raises for a throw with 64 bits. Gone on with where nobody catches it, it calls
// std::terminate().
bool isThrow(const EXCEPTION_RECORD& exception) noexcept {
    constexpr DWORD thrown = 0x20474343;
    return exception.ExceptionCode == thrown && (exception.ExceptionFlags & EXCEPTION_NONCONTINUABLE) == 0;
}

bool isFault(DWORD code) noexcept {
    constexpr DWORD kind = 0xF0000000;
    constexpr DWORD error = 0xC0000000;
    return (code & kind) == error;
}

LONG WINAPI untrapped(EXCEPTION_POINTERS* exception) noexcept {
    if (isThrow(*exception->ExceptionRecord)) {
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    constexpr std::size_t neededStack = std::size_t{128} << 10;
    takeReport();
    reportOf(*exception);
    if (stackLeft() < neededStack) {
        reportElsewhereAndEnd();
    }
    reportAndEnd();
}

// Within a report: the thread goes on with the next step, on the rest of its stack.
LONG WINAPI goOn(EXCEPTION_POINTERS* exception) noexcept {
    if (!isFault(exception->ExceptionRecord->ExceptionCode) || !isReporting()) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    CONTEXT& context = *exception->ContextRecord;
    constexpr std::uintptr_t apart = 256;
    constexpr std::uintptr_t alignment = 16;
    const auto place = [](std::uintptr_t stack) { return (stack - apart) / alignment * alignment - sizeof(void*); };
    const auto next = reinterpret_cast<std::uintptr_t>(&reportAndEnd);
#ifdef __x86_64__
    context.Rsp = place(context.Rsp);
    context.Rip = next;
#else
    context.Esp = place(context.Esp);
    context.Eip = next;
#endif
    return EXCEPTION_CONTINUE_EXECUTION;
}

[[noreturn]] void onTerminate() noexcept {
    takeReport();
    reportOfTermination();
    reportAndEnd();
}

[[noreturn]] void onAbort(int /*signal*/) noexcept {
    takeReport();
    reportOfAbort(1);
    reportAndEnd();
}

}  // namespace

void installHandlers() noexcept {
    constexpr ULONG roomAfterOverflow = 32 * 1024;
    constexpr ULONG first = 1;
    ::SetErrorMode(::SetErrorMode(0) | SEM_NOGPFAULTERRORBOX);
    ::SetUnhandledExceptionFilter(untrapped);
    ::AddVectoredExceptionHandler(first, goOn);
    guaranteeStack(roomAfterOverflow);
    letExceptionsLeaveCallbacks();
    std::set_terminate(onTerminate);
    std::signal(SIGABRT, onAbort);
}

}  // namespace platform_windows::crash
