// The ports of the messenger on Linux.
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/xattr.h>

#include <chrono>
#include <thread>

#include "linux_support.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/linux_system.h"
#include "platform/linux/messenger/command_arguments.h"
#include "platform/linux/messenger/folder_rights.h"
#include "platform/linux/messenger/linux_messenger_system.h"
#include "startup/arguments/clsArguments.h"

namespace {

using namespace linux_support;
using namespace platform_linux;
using platform::MessengerEvent;
using platform_linux::messenger::LinuxMessengerSystem;
using Holder = platform::OrderFolder::Holder;
using Kind = MessengerEvent::Kind;
using std::chrono::milliseconds;

std::vector<std::string> split(std::string_view tail) {
    const startup::clsArguments arguments(tail);
    return {arguments.begin(), arguments.end()};
}

TEST(CommandArguments, AreThoseThatTheTailHolds) {
    LinuxSettingsStore settings("");
    // Every tail of these characters, up to some length.
    constexpr std::string_view letters = " \"a";
    for (int length = 0; length <= 9; ++length) {
        for (int number = static_cast<int>(std::pow(3, length)); number-- > 0;) {
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
    // The kinds of what happens until then; the last event is kept.
    std::string untilQuiet(milliseconds atMost) {
        std::string kinds;
        for (const MessengerEvent& event : system.wait(atMost)) {
            kinds += std::to_string(static_cast<int>(event.kind));
            last = event;
        }
        return kinds;
    }
    platform::ProgramId run(const std::string& script) {
        put(folder / "program", "#!/bin/sh\n" + script);
        std::filesystem::permissions(folder / "program", std::filesystem::perms::owner_all);
        return system.start(folder / "program", *orders, R"(A.OUT  "Größe 1" "x)");
    }

    TemporaryFolder folder;
    const Variable configuration{"XDG_CONFIG_HOME", (folder / "config").c_str()};
    LinuxMessengerSystem system;
    std::unique_ptr<platform::OrderFolder> orders = system.open(folder / "");
    MessengerEvent last;
};

TEST_F(LinuxMessenger, HearsOfOrdersAndOfNothingElse) {
    EXPECT_TRUE(orders->reportsChanges());
    put(folder / "KRVWINPR.OK", "");
    put(folder / "A.OUT", "");
    put(folder / "KRV00001.TMP", "");
    EXPECT_TRUE(orders->make("KRV00002.ERG", "A"));
    EXPECT_EQ(untilQuiet(milliseconds(0)), "");
    std::filesystem::rename(folder / "KRV00001.TMP", folder / "krv00001.auf");
    EXPECT_EQ(untilQuiet(milliseconds(5000)), "0");
    EXPECT_EQ(last.folder, orders.get());
    std::set<std::string> names;
    for (const platform::OrderFile& file : orders->files()) {
        names.insert(file.name);
        EXPECT_TRUE(file.age >= -1 && file.age < 60) << file.age;
    }
    EXPECT_EQ(names, (std::set<std::string>{"krv00001.auf", "KRV00002.ERG"}));
    // A folder is gone when another one has its name.
    std::filesystem::rename(folder / "", folder / "../krv-test-moved");
    EXPECT_EQ(untilQuiet(milliseconds(5000)), "0");
    std::filesystem::create_directory(folder / "");
    EXPECT_EQ(errorOf([&] { orders->files(); }), runtime::errPathNotFound);
    EXPECT_EQ(errorOf([&] { system.open(folder / "missing"); }), runtime::errPathNotFound);
    std::filesystem::remove_all(folder / "../krv-test-moved");
    EXPECT_EQ(untilQuiet(milliseconds(5000)), "0");
    EXPECT_FALSE(orders->remove("KRV00002.ERG"));
}
}  // namespace
