#include "platform/linux/linux_dialogs.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/linux/c_string.h"
#include "platform/linux/desktop.h"
#include "platform/linux/detached_start.h"
#include "platform/linux/file_calls.h"
#include "platform/linux/forked_call.h"
#include "platform/linux/module.h"
#include "platform/linux/notification/notification.h"
#include "platform/linux/paths.h"
#include "platform/linux/standard_error.h"
#include "platform/linux/terminal.h"
#include "platform/messages/unseen_box.h"
#include "runtime/program.h"

namespace platform_linux {

namespace {

using platform::Answer;
using platform::Buttons;

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

void LinuxDialogs::tell(const std::string& text) {
    takeStatusLineAway();
    writeToStandardError(std::string(runtime::programName) + ": " + text + "\n");
}

void LinuxDialogs::takeStatusLineAway() noexcept {
    if (std::exchange(statusShown_, false)) {
        writeOverTerminalLine({});
    }
}

Answer LinuxDialogs::messageBox(const std::string& text, Buttons buttons, platform::Icon icon,
                                const std::string& title) {
    Answer answer = platform::messages::unseenAnswer(buttons);
    withMemory([&] {
        if (qt::Desktop* windows = desktop_.get()) {
            takeStatusLineAway();
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

bool LinuxDialogs::answerCaller(const std::string& text) {
    return isShellsOutput() && writeAll(STDOUT_FILENO, text).error == 0;
}

bool LinuxDialogs::watched() { return terminalIsWatched(); }

void LinuxDialogs::statusLine(const std::string& line) {
    if (terminalIsWatched() && (statusShown_ || !line.empty())) {
        withMemory([&] { writeOverTerminalLine(line); });
        statusShown_ = !line.empty() && !line.ends_with('\n');
    }
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

void LinuxDialogs::outOfMemory() noexcept {
    takeStatusLineAway();
    writeToStandardError("KRVWinPr: Nicht genügend Speicher\n");
}

}  // namespace platform_linux
