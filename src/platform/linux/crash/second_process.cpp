#include "platform/linux/crash/second_process.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string_view>

#include "runtime/program.h"

namespace platform_linux::crash {

namespace {

constexpr std::size_t mostVariables = 4096;
constinit std::array<const char*, mostVariables> variables{};

// What crashes on purpose is not handed on: the second process would, too.
void makeEnvironment() noexcept {
    std::size_t count = 0;
    variables[count++] = "KRVWINPR_ERROR_REPORT=1";
    for (char** variable = environ; variable != nullptr && *variable != nullptr && count + 1 < mostVariables;
         ++variable) {
        if (!std::string_view(*variable).starts_with("KRVWINPR_CRASH=")) {
            variables[count++] = *variable;
        }
    }
    variables[count] = nullptr;
}

// The library's own function calls what others have registered for it, and takes locks.
pid_t forkOnly() noexcept { return static_cast<pid_t>(::syscall(SYS_clone, SIGCHLD, nullptr, nullptr, nullptr, 0)); }

[[noreturn]] void becomeProgram() noexcept {
    struct sigaction usual {};
    usual.sa_handler = SIG_DFL;
    for (const int number : {SIGPIPE, SIGXFSZ}) {
        ::sigaction(number, &usual, nullptr);
    }
    sigset_t none{};
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    constexpr unsigned int highestDescriptor = ~0U;
    ::close_range(0, highestDescriptor, 0);
    ::open("/dev/null", O_RDWR);
    ::dup2(STDIN_FILENO, STDOUT_FILENO);
    ::dup2(STDIN_FILENO, STDERR_FILENO);
    const std::array<const char*, 2> arguments = {runtime::programName, nullptr};
    // NOLINTBEGIN(cppcoreguidelines-pro-type-const-cast): the call does not write to them
    ::execve("/proc/self/exe", const_cast<char* const*>(arguments.data()), const_cast<char* const*>(variables.data()));
    // NOLINTEND(cppcoreguidelines-pro-type-const-cast)
    ::_exit(1);
}

}  // namespace

// The child in between ends at once, so that the process is nobody's here.
void startSecondProcess() noexcept {
    makeEnvironment();
    const pid_t between = forkOnly();
    if (between == 0) {
        ::setsid();
        if (forkOnly() == 0) {
            becomeProgram();
        }
        ::_exit(0);
    }
    while (between > 0 && ::waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
    }
}

}  // namespace platform_linux::crash
