// The port Dialogs on Linux, beside what ports_test.cpp asks of every system.
#include "platform/linux/linux_dialogs.h"

#include <array>

#include "linux_support.h"
#include "platform/linux/forked_call.h"
#include "platform/linux/linux_forms.h"
#include "platform/linux/printer_folder.h"

namespace {

using namespace linux_support;
using namespace platform_linux;

// What the function writes to standard error, in a process of its own.
std::string errorsOf(const std::function<void(LinuxDialogs&)>& function) {
    const TemporaryFile file;
    const pid_t child = start([&] {
        ::dup2(file.descriptor(), STDERR_FILENO);
        LoadedDesktop desktop;
        LinuxDialogs dialogs(desktop);
        function(dialogs);
        return 0;
    });
    EXPECT_EQ(ended(child), 0);
    return get(file.path());
}

TEST(LinuxDialogs, OpensTheEditorWithoutWaitingForIt) {
    const TemporaryFolder folder;
    put(folder / "-r.log", "x");
    put(folder / "xdg-open", "#!/bin/sh\nprintf %s \"$1\" > \"$0.pipe\"\n");  // waits until that is read
    ::chmod((folder / "xdg-open").c_str(), 0700);
    ::mkfifo((folder / "xdg-open.pipe").c_str(), 0600);
    const Variable path("PATH", (folder / "").c_str());
    const auto show = [&folder](LinuxDialogs& dialogs) {
        std::filesystem::current_path(folder / "");
        dialogs.showTextFile("-R.LOG");
    };
    const Variable wayland("WAYLAND_DISPLAY", nullptr);
    const Variable none("DISPLAY", nullptr);
    EXPECT_NE(errorsOf(show), "");
    const Variable display("DISPLAY", ":4711");
    ASSERT_EQ(errorsOf(show), "");
    EXPECT_EQ(get(folder / "xdg-open.pipe"), folder / "-r.log");
}

TEST(PrinterFolder, IsTheDesktopsOwnOrTheWebPageOrSaysWhatToInstall) {
    struct Row {
        const char* desktop;
        std::vector<std::string> programs;
        std::string started;
    };
    const std::array rows = {
        Row{"KDE", {"systemsettings5", "system-config-printer"}, "systemsettings5 kcm_printer_manager"},
        Row{"ubuntu:GNOME", {"gnome-control-center", "xdg-open"}, "gnome-control-center printers"},
        Row{"XFCE", {"gnome-control-center", "system-config-printer", "xdg-open"}, "system-config-printer "},
        Row{nullptr, {"xdg-open"}, "xdg-open http://localhost:631/printers"},
    };
    for (const Row& row : rows) {
        const TemporaryFolder folder;
        ::mkfifo((folder / "started").c_str(), 0600);
        for (const std::string& program : row.programs) {
            put(folder / program, "#!/bin/sh\necho -n \"${0##*/} $*\" > \"${0%/*}/started\"\n");
            ::chmod((folder / program).c_str(), 0700);
        }
        const Variable path("PATH", (folder / "").c_str());
        const Variable desktop("XDG_CURRENT_DESKTOP", row.desktop);
        EXPECT_EQ(ended(start([] { return openPrinterFolder().empty() ? 0 : 1; })), 0);
        EXPECT_EQ(get(folder / "started"), row.started);
    }
    const Variable path("PATH", "/nowhere");
    EXPECT_NE(openPrinterFolder().find("„system-config-printer“ installieren"), std::string::npos);
}

TEST(LinuxForms, FolderAndMailAreOpenedByTheDesktopsPrograms) {
    const TemporaryFolder folder;
    const auto program = [&folder](const char* name, const std::string& line) {
        put(folder / name, "#!/bin/sh\n" + line + "\n");
        ::chmod((folder / name).c_str(), 0700);
    };
    const std::string text = "1. Zeile: 100 % & mehr\r\n2. Größe";
    const std::string link = "mailto:?subject=Fehler%20%231&body=1.%20Zeile%3A%20100%20%25%20%26%20mehr%0D%0A";
    LoadedDesktop desktop;
    LinuxForms forms(desktop);
    const Variable path("PATH", (folder / "").c_str());
    EXPECT_FALSE(forms.showInFolder("/home/meier/KRVWinPr.ERR") || forms.composeMail("Fehler #1", text));
    ::mkfifo((folder / "started").c_str(), 0600);
    program("xdg-open", "echo -n \"$*\" > \"${0%/*}/started\"");
    program("xdg-mime", "[ \"$*\" = 'query default x-scheme-handler/mailto' ] && echo $MAILER");
    EXPECT_TRUE(forms.showInFolder("/home/meier/KRVWinPr.ERR"));
    EXPECT_EQ(get(folder / "started"), "/home/meier/");
    EXPECT_FALSE(forms.composeMail("Fehler #1", text));
    const Variable mailer("MAILER", "post.desktop");
    EXPECT_TRUE(forms.composeMail("Fehler #1", text));
    EXPECT_EQ(get(folder / "started"), link + "2.%20Gr%C3%B6%C3%9Fe");
}

TEST(LinuxDialogs, DiagnosticsSurviveAStandardErrorThatNobodyReads) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const auto diagnose = [](int error) {
        return ended(start([error] {
            error < 0 ? ::close(STDERR_FILENO) : ::dup2(error, STDERR_FILENO);
            LoadedDesktop desktop;
            LinuxDialogs(desktop).diagnostic(std::string(1'000'000, 'x'));  // far more than a pipe takes
            return 0;
        }));
    };
    EXPECT_EQ(diagnose(-1), 0);
    EXPECT_EQ(diagnose(ends[1]), 0);
    ::close(ends[0]);
    EXPECT_EQ(diagnose(ends[1]), 0);
}

TEST(ForkedCall, GivesUpOnWhatHangsCrashesOrThrows) {
    using namespace std::chrono_literals;
    EXPECT_EQ(forkedCall([] { return 42; }, 5s), 42);
    EXPECT_EQ(forkedCall([]() -> int { throw 1; }, 5s), std::nullopt);
    EXPECT_EQ(forkedCall([] { return ::kill(::getpid(), SIGABRT); }, 5s), std::nullopt);
    EXPECT_EQ(forkedCall([] { return ::pause(); }, 100ms), std::nullopt);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child is left over";
}

}  // namespace

// Without a display, with one that cannot be reached, where Qt would end the process, and with one that nobody sees.
std::string support::writtenBy(const std::function<void(platform::Dialogs&)>& function) {
    const Variable noPrograms("PATH", "/nowhere");
    const Variable noEditor("VISUAL", nullptr);
    std::set<std::string> written;
    for (const auto& [x11, wayland] :
         {std::pair<const char*, const char*>{}, {":4711", nullptr}, {nullptr, "wayland-0"}}) {
        const Variable display("DISPLAY", x11);
        const Variable socket("WAYLAND_DISPLAY", wayland);
        const Variable platform("QT_QPA_PLATFORM", wayland != nullptr ? "offscreen" : nullptr);
        written.insert(errorsOf(function));
    }
    EXPECT_EQ(written.size(), 1U);
    return *written.begin();
}
