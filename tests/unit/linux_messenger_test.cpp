// The ports of the messenger on Linux.
#include <sys/resource.h>
#include <sys/xattr.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>

#include "linux_support.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/linux_system.h"
#include "platform/linux/messenger/command_arguments.h"
#include "platform/linux/messenger/linux_messenger_system.h"
#include "platform/linux/messenger/session.h"
#include "startup/arguments/clsArguments.h"

namespace {

using namespace linux_support;
using namespace platform_linux;
using platform::MessengerEvent;
using platform_linux::messenger::LinuxMessengerSystem;
using Holder = platform::OrderFolder::Holder;
using std::chrono::milliseconds;

constexpr milliseconds patience{5000};

std::vector<std::string> split(std::string_view tail) {
    const startup::clsArguments arguments(tail);
    return {arguments.begin(), arguments.end()};
}

TEST(CommandArguments, AreThoseThatTheTailHolds) {
    LinuxSettingsStore settings("");
    constexpr std::string_view letters = " \"a";
    for (int length = 0; length <= 9; ++length) {
        for (int number = static_cast<int>(std::pow(letters.size(), length)); number-- > 0;) {
            std::string tail;
            for (int i = 0, rest = number; i < length; ++i, rest /= 3) {
                tail += letters[static_cast<std::size_t>(rest % 3)];
            }
            const std::vector<std::string> arguments = messenger::argumentsOf(tail);
            std::vector<const char*> pointers{"KRVWinPr"};
            for (const std::string& argument : arguments) {
                pointers.push_back(argument.c_str());
            }
            LinuxSystem system(static_cast<int>(pointers.size()), pointers.data(), settings);
            ASSERT_EQ(split(system.commandTail()), split(tail)) << tail;
        }
    }
}

class LinuxMessenger : public testing::Test {
protected:
    LinuxMessenger() {
        std::filesystem::create_directory(host);
        orders = system.open(host);
    }

    // What happens until something does: "f" the folder changed, "c" a completion file, "e" an end.
    std::string heard(milliseconds atMost = patience) {
        std::string kinds;
        for (const MessengerEvent& event : system.wait(atMost)) {
            kinds += "fce?"[static_cast<int>(event.kind)];
            last = event;
        }
        return kinds;
    }
    std::string inHost(const std::string& name) const { return host + "/" + name; }
    platform::ProgramId run(const std::string& script) {
        put(folder / "program", "#!/bin/sh\n" + script);
        std::filesystem::permissions(folder / "program", std::filesystem::perms::owner_all);
        return system.start(folder / "program", *orders, R"( A.OUT  "Größe 1" x )");
    }

    TemporaryFolder folder;
    const Variable configuration{"XDG_CONFIG_HOME", (folder / "config").c_str()};
    const std::string host = folder / "host";
    LinuxMessengerSystem system;
    std::unique_ptr<platform::OrderFolder> orders;
    MessengerEvent last;
};

TEST_F(LinuxMessenger, HearsOfOrdersAndOfNothingElse) {
    EXPECT_TRUE(orders->reportsChanges());
    for (const char* name : {"KRVWINPR.OK", "A.OUT", "KRV00001.TMP", "KRVWinPr.LOG"}) {
        put(inHost(name), "");
    }
    EXPECT_TRUE(orders->make("KRV00002.ERG", "A"));
    EXPECT_EQ(heard(milliseconds(0)), "");
    std::filesystem::rename(inHost("KRV00001.TMP"), inHost("krv00001.auf"));
    EXPECT_EQ(heard(), "f");
    EXPECT_EQ(last.folder, orders.get());
    makeOld(inHost("KRV00002.ERG"), std::chrono::hours(-2));
    put(inHost("KRV0000.AUF"), "");
    std::set<std::string> names;
    for (const platform::OrderFile& file : orders->files()) {
        names.insert(file.name + (file.age < -7000 ? " ahead" : file.age < 60 ? " new" : " old"));
    }
    EXPECT_EQ(names, (std::set<std::string>{"krv00001.auf new", "KRV00002.ERG ahead"}));
    EXPECT_TRUE(orders->isAt(folder / "HOST\\..\\host") && !orders->isAt(folder / "x") && !orders->isAt(folder / "."));
    std::filesystem::create_directories(folder / "Firma Daten.alt/Lager");
    const auto longNamed = system.open(folder / "Firma Daten.alt/Lager");
    EXPECT_TRUE(longNamed->isAt(folder / "FIRMAD~1.ALT\\LAGER") && !longNamed->isAt(folder / "FIRMEN~1.ALT\\LAGER"));

    // Another one of its name is another one.
    const std::string mark = orders->completionMark();
    put(folder / "new", "");
    std::filesystem::rename(folder / "new", inHost("KRVWINPR.OK"));
    EXPECT_NE(orders->completionMark(), mark);
    std::filesystem::rename(host, folder / "moved");
    EXPECT_EQ(heard(), "f");
    std::filesystem::create_directory(host);
    EXPECT_EQ(errorOf([this] { orders->files(); }), runtime::errPathNotFound);
    std::filesystem::remove_all(folder / "moved");
    EXPECT_EQ(heard(), "f");
    EXPECT_EQ(errorOf([this] { orders->hold(); }), runtime::errPathNotFound);
    EXPECT_EQ(errorOf([this] { system.open(folder / "missing"); }), runtime::errPathNotFound);

    system.settings()->setText(platform::SettingsRoot::currentUser, R"(Software\Velmora\KRVWinPr\3.0\Bote)",
                               "Ereignisse", "0");
    orders = system.open(host + "/");
    EXPECT_EQ(orders->path(), host);
    EXPECT_FALSE(orders->reportsChanges());
    put(inHost("KRV00003.AUF"), "");
    EXPECT_EQ(heard(), "f");
}

TEST_F(LinuxMessenger, OneAloneHoldsAFolderUntilItEnds) {
    LinuxMessengerSystem second;
    const auto others = second.open(host);
    put(inHost("KRVWINPR.BOT"), "left by one that was killed");
    EXPECT_EQ(orders->holder(), "");
    EXPECT_EQ(orders->hold(), Holder::ours);
    EXPECT_EQ(orders->hold(), Holder::ours);
    EXPECT_EQ(others->hold(), Holder::another);
    EXPECT_EQ(others->holder(), system.identity());
    EXPECT_NE(system.identity().find(std::to_string(::getpid())), std::string::npos);
    EXPECT_EQ(second.wait(milliseconds(0)).size(), 1U);
    EXPECT_EQ(second.wait(milliseconds(0)).size(), 0U);  // to ask in vain is nothing that anybody hears of
    orders.reset();
    EXPECT_EQ(second.wait(patience).size(), 1U);
    EXPECT_EQ(others->hold(), Holder::ours);
    // Somebody has tidied up, and somebody else was faster.
    std::filesystem::remove(inHost("KRVWINPR.BOT"));
    orders = system.open(host);
    EXPECT_EQ(orders->hold(), Holder::ours);
    EXPECT_EQ(others->hold(), Holder::another);
    EXPECT_EQ(ended(start([&] {
                  refuseCalls(EOPNOTSUPP, {SYS_flock, SYS_fcntl});
                  return second.open(host)->hold() == Holder::ours ? 0 : 1;
              })),
              0);
    std::filesystem::remove(inHost("KRVWINPR.BOT"));
    std::filesystem::create_symlink("x", inHost("KRVWINPR.BOT"));
    EXPECT_NE(errorOf([&] { others->hold(); }), 0);
}

TEST_F(LinuxMessenger, ReadsOnlyWhatBelongsIntoTheFolder) {
    const std::string file = inHost("KRV00001.AUF");
    const auto reading = [&] { return errorOf([this] { orders->read("KRV00001.AUF"); }); };
    EXPECT_EQ(reading(), runtime::errFileNotFound);
    put(file, std::string(2000, 'x'));
    EXPECT_EQ(orders->read("KRV00001.AUF"), std::string(1025, 'x'));
    std::filesystem::rename(file, folder / "elsewhere");
    const std::vector<std::function<void()>> others{
        [&] { std::filesystem::create_hard_link(folder / "elsewhere", file); },
        [&] { std::filesystem::create_symlink(folder / "elsewhere", file); },
        [&] { ::mkfifo(file.c_str(), 0600); },
        [&] { std::filesystem::create_directory(file); },
    };
    for (const auto& put : others) {
        std::filesystem::remove(file);
        put();
        EXPECT_EQ(reading(), runtime::errPermissionDenied);
        EXPECT_EQ(errorOf([this] { orders->change("KRV00001.AUF", "y"); }), runtime::errPermissionDenied);
    }
    EXPECT_FALSE(orders->remove("KRV00001.AUF"));
}

TEST_F(LinuxMessenger, TakesOrdersOfThoseWhoMayWriteThere) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root gives files away";
    }
    put(inHost("KRV00001.AUF"), "x");
    ASSERT_EQ(::chown(inHost("KRV00001.AUF").c_str(), nobody, nobody), 0);
    const auto isTaken = [this](mode_t mode, uid_t owner, gid_t group) {
        EXPECT_EQ(::chown(host.c_str(), owner, group) + ::chmod(host.c_str(), mode), 0);
        return errorOf([this] { orders->read("KRV00001.AUF"); }) == 0;
    };
    // An answer by the messenger of another user.
    put(inHost("KRV00001.ERG"), "A");
    EXPECT_TRUE(isTaken(0777, 1, 1));
    EXPECT_EQ(ended(start([this] {
                  return ::setresuid(nobody, nobody, nobody) + errorOf([this] { orders->change("KRV00001.ERG", "S"); });
              })),
              0);
    EXPECT_EQ(get(inHost("KRV00001.ERG")), "S");
    const gid_t daemon = 1;
    EXPECT_FALSE(isTaken(0775, 1, daemon));
    EXPECT_TRUE(isTaken(0777, 1, daemon));
    EXPECT_TRUE(isTaken(0755, nobody, daemon));
    EXPECT_FALSE(isTaken(0575, nobody, daemon));
    EXPECT_TRUE(isTaken(0775, 1, nobody));
    EXPECT_FALSE(isTaken(0755, 1, nobody));
    // A list that names the user: version; owner, this user, group, mask, others.
    const auto named = [&](char permissions, char mask) {
        std::string list(
            "\2\0\0\0\1\0\7\0\xFF\xFF\xFF\xFF\2\0?\0\xFE\xFF\0\0\4\0\5\0\xFF\xFF\xFF\xFF\x10\0?\0\xFF\xFF\xFF\xFF "
            "\0\0\0\xFF\xFF\xFF\xFF",
            44);
        list[14] = permissions;
        list[30] = mask;
        return ::setxattr(host.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) == 0;
    };
    ASSERT_FALSE(isTaken(0700, 1, daemon));
    if (named(7, 7)) {
        EXPECT_EQ(errorOf([this] { orders->read("KRV00001.AUF"); }), 0);
        std::string detail;
        EXPECT_TRUE(named(7, 5));
        EXPECT_EQ(errorOf([this] { orders->read("KRV00001.AUF"); }, &detail), runtime::errPermissionDenied);
        EXPECT_NE(detail.find("nobody"), std::string::npos) << detail;
    }
}

TEST_F(LinuxMessenger, MakesAnswersWholeAndOnce) {
    EXPECT_TRUE(orders->make("KRV00001.ERG", "A 12345678\r\nText"));
    EXPECT_FALSE(orders->make("krv00001.erg", "B"));
    orders->change("KRV00001.ERG", "E 1");
    EXPECT_EQ(get(inHost("KRV00001.ERG")), "E 1");
    EXPECT_EQ(errorOf([this] { orders->change("KRV00002.ERG", "E"); }), runtime::errFileNotFound);
    EXPECT_EQ(ended(start([this] {
                  const rlimit limit{2, 2};
                  ::setrlimit(RLIMIT_FSIZE, &limit);
                  ::signal(SIGXFSZ, SIG_IGN);
                  return errorOf([this] { orders->make("KRV00002.ERG", "A 1234"); });
              })),
              runtime::errDiskFull);
    put(inHost("KRV00001.AUF"), "x");
    put(inHost("krv00001.abg"), "y");
    EXPECT_FALSE(orders->rename("KRV00001.AUF", "KRV00001.ABG"));
    EXPECT_TRUE(orders->rename("KRV00001.AUF", "KRV00001.AB1"));
    // A disk that knows neither.
    EXPECT_EQ(ended(start([this] {
                  refuseCalls(EINVAL, {SYS_renameat2, SYS_linkat});
                  return orders->rename("KRV00001.AB1", "KRV00001.AB2") && orders->make("KRV00003.ERG", "A") &&
                                 !orders->make("KRV00003.ERG", "A")
                             ? 0
                             : 1;
              })),
              0);
    EXPECT_TRUE(orders->remove("KRV00003.ERG") && orders->remove("KRV00003.ERG"));
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(host)) {
        names.insert(entry.path().filename());
    }
    EXPECT_EQ(names, (std::set<std::string>{"KRV00001.AB2", "KRV00001.ERG", "krv00001.abg"}));
}

TEST_F(LinuxMessenger, HearsWhatBecomesOfAProgram) {
    const int inherited = ::dup(STDOUT_FILENO);
    const auto program =
        run("for i; do echo \"[$i]\"; done > ../arguments\n"
            "ls /proc/self/fd > ../descriptors; env | grep -c KRVWINPR_STARTER=3 >> ../descriptors\n"
            "printf KK >&3; sleep 9 >&0 2>&0 & exit 3");
    EXPECT_GT(system.processNumber(program), 1U);
    const std::string first = heard();
    EXPECT_EQ(first == "c" ? first + heard() : first, "ce");
    EXPECT_EQ(last.program, program);
    EXPECT_EQ(last.how, "Rückgabewert 3");
    EXPECT_EQ(system.processNumber(program), 0U);
    EXPECT_EQ(get(folder / "arguments"), "[A.OUT]\n[]\n[\"Größe 1\"]\n[x]\n");
    EXPECT_EQ(get(folder / "descriptors"), "0\n1\n2\n3\n4\n1\n");  // the fourth is that of ls
    ::close(inherited);
    run("kill -TERM $$");
    EXPECT_EQ(heard(), "e");
    EXPECT_EQ(last.how, "Signal 15 (SIGTERM)");
    EXPECT_EQ(ended(start([] {
                  ::signal(SIGHUP, SIG_IGN);
                  LinuxMessengerSystem afterLogout;
                  ::kill(::getpid(), SIGHUP);
                  return static_cast<int>(afterLogout.wait(milliseconds(0)).size());
              })),
              0);

    EXPECT_EQ(errorOf([this] { system.start(folder / "missing", *orders, ""); }), runtime::errFileNotFound);
    EXPECT_EQ(errorOf([this] { system.start(folder / "arguments", *orders, ""); }), runtime::errPermissionDenied);
    std::filesystem::remove_all(host);
    EXPECT_EQ(errorOf([this] { run(""); }), runtime::errPathNotFound);
}

TEST_F(LinuxMessenger, WritesToTheJournalWhatItIs) {
    const auto logged = [](bool journal, const std::function<void()>& log) {
        testing::internal::CaptureStderr();
        struct stat status {};
        ::fstat(STDERR_FILENO, &status);
        const std::string file =
            std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino + (journal ? 0 : 1));
        const Variable variable("JOURNAL_STREAM", file.c_str());
        log();
        return testing::internal::GetCapturedStderr();
    };
    const auto warn = [] { LinuxMessengerSystem().log(LinuxMessengerSystem::Severity::warning, "eins\nzwei"); };
    EXPECT_EQ(logged(true, warn), "<4>eins zwei\n");
    EXPECT_EQ(logged(false, warn), "eins zwei\n");
    // A system that reports no more folders: what is to be done is said once.
    const std::string told = logged(false, [this] {
        EXPECT_EQ(ended(start([this] {
                      LinuxMessengerSystem another;
                      refuseCalls(EMFILE, {SYS_inotify_init1});
                      return another.open(host)->reportsChanges() || another.open(host)->reportsChanges() ? 1 : 0;
                  })),
                  0);
    });
    EXPECT_NE(told.find("fs.inotify.max_user_instances"), std::string::npos) << told;
    EXPECT_EQ(std::ranges::count(told, '\n'), 1) << told;
}

TEST_F(LinuxMessenger, StartsWithTheSessionAndFindsItsDesktop) {
    // A systemctl that says what it is asked for.
    std::filesystem::create_directories(folder / "bin");
    std::filesystem::create_directories(folder / "lib/systemd/user");
    std::filesystem::create_directories(folder / "run/systemd");
    put(folder / "bin/systemctl",
        "#!/bin/sh\necho \"$@\" >> \"$0.asked\"\n"
        "printf '%s\\n' LANG=xx \"WAYLAND_DISPLAY=\\$'a b'\" DISPLAY=:7\n[ \"$2\" != disable ]\n");
    std::filesystem::permissions(folder / "bin/systemctl", std::filesystem::perms::owner_all);
    const std::string program = folder / "bin/KRVWin \"Bote";
    const std::string entry = folder / "config/autostart/krvwinpr-messenger.desktop";
    const Variable path("PATH", (folder / "bin:" + std::string(::getenv("PATH"))).c_str());
    const Variable runtimeFolder("XDG_RUNTIME_DIR", (folder / "run").c_str());
    const Variable x("DISPLAY", nullptr);
    const Variable wayland("WAYLAND_DISPLAY", nullptr);

    EXPECT_NE(messenger::startWithSession(true, program).find(program), std::string::npos);
    EXPECT_NE(get(entry).find("Exec=\"" + folder / "bin/KRVWin \\\\\"Bote\"\n"), std::string::npos) << get(entry);
    put(folder / "run/systemd/private", "");
    put(folder / "lib/systemd/user/krvwinpr-messenger.service", "");
    const std::string unit = std::filesystem::canonical(folder / "lib/systemd/user/krvwinpr-messenger.service");
    EXPECT_EQ(messenger::startWithSession(true, program), "");
    EXPECT_FALSE(std::filesystem::exists(entry));
    std::string detail;
    EXPECT_NE(errorOf([&] { messenger::startWithSession(false, program); }, &detail), 0);
    EXPECT_NE(detail.find("disable --now krvwinpr-messenger.service meldet: LANG=xx"), std::string::npos) << detail;
    EXPECT_EQ(ended(start([&] {
                  messenger::joinDesktop();
                  const bool joined = std::string_view(::getenv("DISPLAY")) == ":7";
                  return joined && ::getenv("WAYLAND_DISPLAY") == nullptr ? 0 : 1;
              })),
              0);
    EXPECT_EQ(get(folder / "bin/systemctl.asked"), "--user enable --now " + unit +
                                                       "\n--user disable --now krvwinpr-messenger.service\n"
                                                       "--user show-environment\n");
}

}  // namespace
