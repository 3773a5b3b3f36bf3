#include "platform/linux/forked_call.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "platform/linux/file_descriptor.h"

namespace platform_linux {

namespace {

void leaveNoCore() {
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
}

[[noreturn]] void runChild(const std::function<int()>& function, int reportTo) {
    leaveNoCore();
    if (const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC); nowhere >= 0) {
        ::dup2(nowhere, STDERR_FILENO);
    }
    try {
        const int result = function();
        const bool told = ::write(reportTo, &result, sizeof result) == sizeof result;
        ::_exit(told ? 0 : 1);
    } catch (...) {
        ::_exit(1);
    }
}

// Whether there is something to read, or the other end was closed, before the limit.
bool waitFor(int descriptor, std::chrono::milliseconds limit) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + limit;
    int ready = -1;
    do {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        pollfd waiting{descriptor, POLLIN, 0};
        ready = ::poll(&waiting, 1, left.count() > 0 ? static_cast<int>(left.count()) : 0);
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

void letGoOfEverything() {
    constexpr unsigned int highestDescriptor = ~0U;
    ::close_range(0, highestDescriptor, 0);
    ::open("/dev/null", O_RDWR);
    ::dup2(STDIN_FILENO, STDOUT_FILENO);
    ::dup2(STDIN_FILENO, STDERR_FILENO);
    if (::chdir("/") != 0) {
        ::_exit(1);
    }
}

void endAfter(std::chrono::seconds limit) {
    sigset_t alarm;
    ::sigemptyset(&alarm);
    ::sigaddset(&alarm, SIGALRM);
    ::signal(SIGALRM, SIG_DFL);
    ::sigprocmask(SIG_UNBLOCK, &alarm, nullptr);
    ::alarm(static_cast<unsigned int>(limit.count()));
}

[[noreturn]] void runDetached(const std::function<void()>& function, std::chrono::seconds limit) {
    endAfter(limit);
    leaveNoCore();
    letGoOfEverything();
    try {
        function();
    } catch (...) {
        ::_exit(1);
    }
    ::_exit(0);
}

void waitForEndOf(pid_t child) {
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

}  // namespace

std::optional<int> forkedCall(const std::function<int()>& function, std::chrono::milliseconds limit) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    const pid_t child = ::fork();
    if (child == 0) {
        runChild(function, writing.get());
    }
    if (child < 0) {
        return std::nullopt;
    }
    writing.close();
    int result = 0;
    const bool told = waitFor(reading.get(), limit) && ::read(reading.get(), &result, sizeof result) == sizeof result;
    ::kill(child, SIGKILL);
    waitForEndOf(child);
    return told ? std::optional<int>(result) : std::nullopt;
}

// The child in between ends at once, so that the process is nobody's here and leaves no trace when it ends.
void detachedCall(const std::function<void()>& function, std::chrono::seconds limit) {
    const pid_t between = ::fork();
    if (between == 0) {
        ::setsid();
        if (::fork() == 0) {
            runDetached(function, limit);
        }
        ::_exit(0);
    }
    if (between > 0) {
        waitForEndOf(between);
    }
}

}  // namespace platform_linux
