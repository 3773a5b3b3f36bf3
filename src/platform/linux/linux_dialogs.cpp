#include "platform/linux/linux_dialogs.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <string_view>

#include "platform/linux/c_string.h"
#include "platform/linux/desktop.h"
#include "platform/linux/detached_start.h"
#include "platform/linux/forked_call.h"
#include "platform/linux/module.h"
#include "platform/linux/notification/notification.h"
#include "platform/linux/paths.h"
#include "platform/messages/unseen_box.h"
#include "runtime/program.h"

namespace platform_linux {

namespace {

using platform::Answer;
using platform::Buttons;

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

// Gives up rather than wait for a reader that does not read.
void writeToStandardError(std::string_view text) {
    constexpr int patience = 1000;  // milliseconds
    const NoBrokenPipeSignal quiet;
    while (!text.empty()) {
        pollfd output{STDERR_FILENO, POLLOUT, 0};
        if (::poll(&output, 1, patience) <= 0 || (output.revents & POLLOUT) == 0) {
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

void tell(const std::string& text) { writeToStandardError(std::string(runtime::programName) + ": " + text + "\n"); }

// The user's own choice of a program first, then the editors that desktops come with.
bool openInEditor(const std::string& file) {
    const char* visual = ::getenv("VISUAL");
    const std::array<std::string, 9> programs = {
        "xdg-open", visual != nullptr ? visual : "", "gnome-text-editor", "gedit", "kate", "kwrite", "mousepad", "xed",
        "pluma"};
    const DetachedStart detached;
    return std::any_of(programs.begin(), programs.end(), [&](const std::string& program) {
        return !program.empty() && detached.start({program, file});
    });
}

std::string absolute(const std::string& path) {
    const CString whole(::realpath(path.c_str(), nullptr));
    return whole ? std::string(whole.get()) : path;
}

}  // namespace

// None of the port's functions throws, whatever it takes to make a message.
template <typename Function>
void LinuxDialogs::withMemory(Function function) noexcept {
    try {
        function();
    } catch (...) {
        outOfMemory();
    }
}

Answer LinuxDialogs::messageBox(const std::string& text, Buttons buttons, platform::Icon icon,
                                const std::string& title) {
    Answer answer = platform::messages::unseenAnswer(buttons);
    withMemory([&] {
        if (qt::Desktop* windows = desktop_.get()) {
            answer =
                windows->messageBox(text, buttons, icon, title.empty() ? std::string(runtime::programName) : title);
        } else {
            tell(platform::messages::unseenBox(text, buttons, icon, title));
        }
    });
    return answer;
}

void LinuxDialogs::processEvents() {
    if (qt::Desktop* windows = desktop_.ifLoaded()) {
        windows->processEvents();
    }
}

void LinuxDialogs::showTextFile(const std::string& path) {
    withMemory([&] {
        const ResolvedPath file = findPath(path);
        const std::string whole = absolute(file.path);
        if (file.error != 0) {
            diagnostic("Die Datei " + path + " ist nicht vorhanden.");
        } else if (!desktopNamed() || !openInEditor(whole)) {
            diagnostic("Bitte lesen Sie die Datei " + whole);
        }
    });
}

void LinuxDialogs::diagnostic(const std::string& line) {
    withMemory([&] { tell(platform::messages::oneLine(line)); });
}

void LinuxDialogs::notify(const std::string& text) {
    constexpr std::chrono::seconds limit{30};
    if (!sessionNamed()) {
        return;
    }
    detachedCall(
        [&text] {
            reinterpret_cast<notification::ShowNotification>(moduleEntry("notification"))(
                platform::messages::oneLine(text));
        },
        limit);
}

void LinuxDialogs::outOfMemory() noexcept { writeToStandardError("KRVWinPr: Nicht genügend Speicher\n"); }

}  // namespace platform_linux
