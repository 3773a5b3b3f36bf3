// How long the host waits: from the start of the process to its completion file, and how long the whole job takes,
// beside an empty program from start to end, alternately, as medians in microseconds.
//
//     startup-bench ROUNDS EMPTY-PROGRAM KRVWINPR [ARGUMENT...]     in a directory of its own, with a print file in it

#include <spawn.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::string_view completionFile = "KRVWINPR.OK";

pid_t start(char** command) {
    pid_t pid = 0;
    if (posix_spawn(&pid, command[0], nullptr, nullptr, command, environ) != 0) {
        std::perror(command[0]);
        std::exit(1);
    }
    return pid;
}

// Waits until the completion file has its name in the watched directory.
void waitForCompletionFile(int watch) {
    alignas(inotify_event) std::array<char, 4096> buffer{};
    while (true) {
        const ssize_t length = read(watch, buffer.data(), buffer.size());
        if (length <= 0) {
            std::perror("inotify");
            std::exit(1);
        }
        const char* position = buffer.data();
        while (position < buffer.data() + length) {
            inotify_event event{};
            std::memcpy(&event, position, sizeof event);
            if (event.len > 0 && completionFile == position + sizeof event) {
                return;
            }
            position += sizeof event + event.len;
        }
    }
}

double microseconds(Clock::duration duration) { return std::chrono::duration<double, std::micro>(duration).count(); }

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s ROUNDS EMPTY-PROGRAM KRVWINPR [ARGUMENT...]\n", argv[0]);
        return 1;
    }
    const int rounds = std::max(1, std::atoi(argv[1]));
    std::array<char*, 2> empty{argv[2], nullptr};
    std::vector<double> emptyTimes;
    std::vector<double> handshakeTimes;
    std::vector<double> jobTimes;
    for (int round = 0; round < rounds; ++round) {
        auto begin = Clock::now();
        waitpid(start(empty.data()), nullptr, 0);
        emptyTimes.push_back(microseconds(Clock::now() - begin));

        unlink(std::string(completionFile).c_str());
        const int watch = inotify_init1(IN_CLOEXEC);
        inotify_add_watch(watch, ".", IN_CLOSE_WRITE | IN_MOVED_TO);
        begin = Clock::now();
        const pid_t job = start(argv + 3);
        waitForCompletionFile(watch);
        handshakeTimes.push_back(microseconds(Clock::now() - begin));
        waitpid(job, nullptr, 0);
        jobTimes.push_back(microseconds(Clock::now() - begin));
        close(watch);
    }
    std::printf("%.0f %.0f %.0f\n", median(emptyTimes), median(handshakeTimes), median(jobTimes));
    return 0;
}
