#include "platform/linux/forked_call.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <string_view>

#include "platform/linux/file_descriptor.h"
#include "platform/linux/memory_room.h"

namespace platform_linux {

namespace {

void leaveNoCore() {
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
}

// The last byte of a report, which says that it is whole.
constexpr char whole = '\n';

bool send(std::string_view text, int descriptor) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

[[noreturn]] void runChild(const std::function<std::string()>& function, int reportTo) {
    leaveNoCore();
    if (const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC); nowhere >= 0) {
        ::dup2(nowhere, STDERR_FILENO);
    }
    try {
        ::_exit(send(function() + whole, reportTo) ? 0 : 1);
    } catch (...) {
        ::_exit(1);
    }
}

using Clock = std::chrono::steady_clock;

// Whether there is something to read, or the other end was closed, before the end of the time.
bool waitFor(int descriptor, Clock::time_point end) {
    int ready = -1;
    do {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        pollfd waiting{descriptor, POLLIN, 0};
        ready = ::poll(&waiting, 1, left.count() > 0 ? static_cast<int>(left.count()) : 0);
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

std::optional<std::string> receive(int descriptor, Clock::time_point end) {
    std::string text;
    std::array<char, PIPE_BUF> part{};
    while (waitFor(descriptor, end)) {
        const ssize_t count = ::read(descriptor, part.data(), part.size());
        if (count == 0 && text.ends_with(whole)) {
            text.pop_back();
            return text;
        }
        if (count == 0 || (count < 0 && errno != EINTR)) {
            break;
        }
        text.append(part.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return std::nullopt;
}

void waitForEndOf(pid_t child) {
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

// A child that does not outlive the object, whatever it is doing.
class Child {
public:
    explicit Child(pid_t number) : number_(number) {}
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        ::kill(number_, SIGKILL);
        waitForEndOf(number_);
    }

private:
    pid_t number_;
};

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

}  // namespace

std::optional<std::string> forkedText(const std::function<std::string()>& function, std::chrono::milliseconds limit) {
    const Clock::time_point end = Clock::now() + limit;
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    const pid_t number = ::fork();
    if (number == 0) {
        runChild(function, writing.get());
    }
    if (number < 0) {
        return std::nullopt;
    }
    const Child child(number);
    writing.close();
    return receive(reading.get(), end);
}

std::optional<int> forkedCall(const std::function<int()>& function, std::chrono::milliseconds limit) {
    const auto text = forkedText([&function] { return std::to_string(function()); }, limit);
    return text ? std::optional(std::atoi(text->c_str())) : std::nullopt;
}

std::optional<std::string> guardedText(const std::function<std::string()>& function, std::chrono::milliseconds limit) {
    return memoryIsPlenty() ? function() : forkedText(function, limit);
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
