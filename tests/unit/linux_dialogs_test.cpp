#include "platform/linux/linux_dialogs.h"

#include <fcntl.h>

#include <array>

#include "linux_support.h"
#include "platform/linux/forked_call.h"

namespace {

using namespace linux_support;
using namespace platform_linux;
using platform::Answer;
using platform::Buttons;
using platform::Icon;

// What the function writes to standard error, in a process of its own.
std::string errorsOf(const std::function<void(LinuxDialogs&)>& function) {
    const TemporaryFolder folder;
    const pid_t child = start([&] {
        const int file = ::open((folder / "errors").c_str(), O_WRONLY | O_CREAT, 0600);
        ::dup2(file, STDERR_FILENO);
        LinuxDialogs dialogs;
        function(dialogs);
        return 0;
    });
    EXPECT_EQ(ended(child), 0);
    return get(folder / "errors");
}

// Without a display, with one that cannot be reached, where Qt would end the process, and with one that nobody sees.
TEST(LinuxDialogs, WithoutADesktopTextGoesToStandardErrorAndTheFirstButtonIsTaken) {
    const std::array<std::array<const char*, 3>, 3> environments = {
        {{nullptr, nullptr, nullptr}, {":4711", nullptr, nullptr}, {nullptr, "wayland-0", "offscreen"}}};
    for (const auto& [x11, wayland, qt] : environments) {
        const Variable display("DISPLAY", x11);
        const Variable socket("WAYLAND_DISPLAY", wayland);
        const Variable platform("QT_QPA_PLATFORM", qt);
        const std::string written = errorsOf([](LinuxDialogs& dialogs) {
            EXPECT_EQ(dialogs.messageBox("Fehler 53\r\n\r\nDatei\x1B[2J fehlt\r", Buttons::ok, Icon::critical, "Druck"),
                      Answer::ok);
            EXPECT_EQ(dialogs.messageBox("Anzeigen?", Buttons::yesNo, Icon::none, "KrvWinPr"), Answer::yes);
            EXPECT_EQ(dialogs.messageBox("Weiter?", Buttons::okCancel, Icon::information, ""), Answer::ok);
            dialogs.processEvents();
        });
        EXPECT_EQ(written,
                  "KRVWinPr: Druck: Fehler 53 Datei [2J fehlt\n"
                  "KRVWinPr: Anzeigen? [Antwort: Ja]\n"
                  "KRVWinPr: Weiter? [Antwort: OK]\n");
    }
}

TEST(LinuxDialogs, NamesTheTextFileWhereNoEditorCanShowIt) {
    const TemporaryFolder folder;
    put(folder / "KRVWinPr.log", "x");
    const Variable noDisplay("DISPLAY", nullptr);
    const Variable wayland("WAYLAND_DISPLAY", nullptr);
    const std::string written = errorsOf([&folder](LinuxDialogs& dialogs) {
        dialogs.showTextFile(folder / "KRVWINPR.LOG");
        dialogs.showTextFile(folder / "missing.log");
        const Variable named("DISPLAY", ":4711");
        const Variable noPrograms("PATH", "/nowhere");
        const Variable noEditor("VISUAL", nullptr);
        dialogs.showTextFile(folder / "KRVWinPr.log");
    });
    const std::string found = "KRVWinPr: Bitte lesen Sie die Datei " + (folder / "KRVWinPr.log") + "\n";
    EXPECT_EQ(written, found + "KRVWinPr: Die Datei " + (folder / "missing.log") + " ist nicht vorhanden.\n" + found);
}

TEST(LinuxDialogs, OpensTheEditorWithoutWaitingForIt) {
    const TemporaryFolder folder;
    put(folder / "-r.log", "x");
    put(folder / "xdg-open", "#!/bin/sh\nsleep 0.3\nprintf %s \"$1\" > \"$0.new\"\nmv \"$0.new\" \"$0.was\"\n");
    ::chmod((folder / "xdg-open").c_str(), 0700);
    const Variable display("DISPLAY", ":4711");
    const Variable path("PATH", ((folder / "") + ":/bin:/usr/bin").c_str());
    EXPECT_EQ(errorsOf([&folder](LinuxDialogs& dialogs) {
                  std::filesystem::current_path(folder / "");
                  dialogs.showTextFile("-R.LOG");
                  EXPECT_FALSE(std::filesystem::exists(folder / "xdg-open.was"));
              }),
              "");
    for (int i = 0; i < 100 && !std::filesystem::exists(folder / "xdg-open.was"); ++i) {
        ::usleep(50'000);
    }
    EXPECT_EQ(get(folder / "xdg-open.was"), folder / "-r.log");
}

TEST(LinuxDialogs, DiagnosticsSurviveAStandardErrorThatNobodyReads) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const auto diagnose = [](int error) {
        return ended(start([error] {
            error < 0 ? ::close(STDERR_FILENO) : ::dup2(error, STDERR_FILENO);
            LinuxDialogs().diagnostic(std::string(1'000'000, 'x'));  // far more than a pipe takes
            return 0;
        }));
    };
    EXPECT_EQ(diagnose(-1), 0);
    EXPECT_EQ(diagnose(ends[1]), 0);
    ::close(ends[0]);
    EXPECT_EQ(diagnose(ends[1]), 0);
    ::close(ends[1]);
}

TEST(ForkedCall, GivesUpOnWhatHangsCrashesOrThrows) {
    using namespace std::chrono_literals;
    EXPECT_EQ(forkedCall([] { return 42; }, 5s), 42);
    const std::vector<std::function<int()>> failing = {[]() -> int { throw 1; }, []() -> int { ::_exit(0); },
                                                       [] { return ::kill(::getpid(), SIGABRT); }};
    for (const auto& function : failing) {
        EXPECT_EQ(forkedCall(function, 5s), std::nullopt);
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(forkedCall([] { return ::pause(); }, 100ms), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child is left over";
}

}  // namespace
