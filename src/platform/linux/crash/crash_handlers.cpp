#include "platform/linux/crash/crash_handlers.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <exception>

#include "platform/linux/crash/crash_report.h"

namespace platform_linux::crash {

namespace {

constexpr std::array crashSignals = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGTRAP, SIGSYS};

// Of a stack that has run over nothing is left for a handler. None of it is touched before something crashes.
constexpr std::size_t handlerStackSize = std::size_t{256} << 10;
alignas(16) constinit std::array<std::byte, handlerStackSize> handlerStack{};

constinit pid_t program = 0;

// The sanitizers tell of crashes themselves, and of more than happened here.
#ifdef __SANITIZE_ADDRESS__
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif

[[noreturn]] void endByDefault(int number) {
    struct sigaction usual {};
    usual.sa_handler = SIG_DFL;
    ::sigaction(number, &usual, nullptr);
    ::raise(number);
    ::_exit(1);
}

extern "C" void onCrash(int number, siginfo_t* info, void* context) {
    if (::getpid() != program) {
        endByDefault(number);
    }
    takeReport();
    reportOf(number, *info, context);
    reportAndEnd();
}

[[noreturn]] void onTermination() {
    if (::getpid() != program) {
        endByDefault(SIGABRT);
    }
    takeReport();
    reportOfTermination();
    reportAndEnd();
}

}  // namespace

void installHandlers() noexcept {
    if (sanitized) {
        return;
    }
    program = ::getpid();
    stack_t stack{};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    ::sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_sigaction = onCrash;
    // One that happens within the handler comes at once, too.
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    for (const int number : crashSignals) {
        ::sigaction(number, &action, nullptr);
    }
    std::set_terminate(onTermination);
}

}  // namespace platform_linux::crash
