#include "platform/linux/standard_error.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>

namespace platform_linux {

namespace {

// Keeps a reader that has gone away from ending the process, where nobody has seen to that yet.
class NoBrokenPipeSignal {
public:
    NoBrokenPipeSignal() {
        struct sigaction ignore {};
        ignore.sa_handler = SIG_IGN;
        ::sigaction(SIGPIPE, &ignore, &before_);
    }
    NoBrokenPipeSignal(const NoBrokenPipeSignal&) = delete;
    NoBrokenPipeSignal& operator=(const NoBrokenPipeSignal&) = delete;
    ~NoBrokenPipeSignal() { ::sigaction(SIGPIPE, &before_, nullptr); }

private:
    struct sigaction before_ {};
};

}  // namespace

void writeToStandardError(std::string_view text, int patienceMilliseconds) noexcept {
    const NoBrokenPipeSignal quiet;
    while (!text.empty()) {
        pollfd output{STDERR_FILENO, POLLOUT, 0};
        if (::poll(&output, 1, patienceMilliseconds) <= 0 || (output.revents & POLLOUT) == 0) {
            return;
        }
        const ssize_t count = ::write(STDERR_FILENO, text.data(), std::min<std::size_t>(text.size(), PIPE_BUF));
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return;
        }
    }
}

}  // namespace platform_linux
