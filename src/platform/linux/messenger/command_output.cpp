#include "platform/linux/messenger/command_output.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

#include "platform/linux/argument_pointers.h"
#include "platform/linux/file_descriptor.h"
#include "platform/linux/messenger/spawn_surroundings.h"

namespace platform_linux::messenger {

namespace {

using Clock = std::chrono::steady_clock;

// Until the other end is closed; whether that was in time.
bool readAll(int from, std::string& text, Clock::time_point end) {
    std::array<char, 4096> part{};
    while (true) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd waiting{from, POLLIN, 0};
        if (::poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(left, 0))) <= 0) {
            return false;
        }
        const ssize_t count = ::read(from, part.data(), part.size());
        if (count <= 0) {
            return count == 0;
        }
        text.append(part.data(), static_cast<std::size_t>(count));
    }
}

}  // namespace

CommandOutput outputOf(std::vector<std::string> command, std::chrono::milliseconds limit) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return {};
    }
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    SpawnSurroundings surroundings;
    surroundings.descriptor(writing.get(), STDOUT_FILENO);
    surroundings.descriptor(writing.get(), STDERR_FILENO);
    surroundings.noneFrom(STDERR_FILENO + 1);
    pid_t child = 0;
    if (::posix_spawnp(&child, command.front().c_str(), surroundings.files(), surroundings.attributes(),
                       pointersTo(command).data(), environ) != 0) {
        return {};
    }
    writing.close();
    CommandOutput result;
    const bool inTime = readAll(reading.get(), result.text, Clock::now() + limit);
    if (!inTime) {
        ::kill(child, SIGKILL);
    }
    int status = -1;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    result.done = inTime && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return result;
}

}  // namespace platform_linux::messenger
