#include "platform/linux/linux_system.h"

#include <ctime>
#include <vector>

#include "linux_support.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/module.h"

namespace {

using namespace linux_support;
using namespace platform_linux;

class LinuxSystemTest : public testing::Test {
protected:
    std::string tailOf(std::initializer_list<const char*> arguments) {
        std::vector<const char*> all{"KRVWinPr"};
        all.insert(all.end(), arguments);
        return LinuxSystem(static_cast<int>(all.size()), all.data(), settings).commandTail();
    }

    TemporaryFolder folder;
    LinuxSettingsStore settings{folder / "settings.ini"};
    LinuxSystem system{0, nullptr, settings};
};

TEST_F(LinuxSystemTest, CommandTailKeepsEachArgumentWhole) {
    EXPECT_EQ(tailOf({}), "");
    EXPECT_EQ(tailOf({"DRUCK.OUT", "KEINEGRAFIK", "HP Laser 1", "/WAIT"}),
              "DRUCK.OUT KEINEGRAFIK \"HP Laser 1\" /WAIT");
    EXPECT_EQ(tailOf({"a", "", "b"}), "a \"\" b");
    EXPECT_EQ(tailOf({"A.OUT \"Laser 1\"", "x\"y z"}), "A.OUT \"Laser 1\" x\"y z");
}

TEST_F(LinuxSystemTest, ReadsEveryByteOfAFileAndNothingElse) {
    std::string content(3'000'000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i) {
        content[i] = static_cast<char>(i * 7);
    }
    put(folder / "big", content);
    EXPECT_TRUE(system.readFile(folder / "big") == content);
    EXPECT_NE(system.readFile("/proc/self/status"), "");  // says that it has no length
    const std::vector<std::pair<std::string, int>> faults = {
        {"/dev/zero", runtime::errPathFileAccess},
        {"", runtime::errBadFileName},
        {std::string("a\0b", 3), runtime::errBadFileName},
        {"/proc/self/mem", runtime::errDeviceIo},
    };
    for (const auto& [path, number] : faults) {
        EXPECT_EQ(errorOf([&, &file = path] { system.readFile(file); }), number) << path;
    }
}

TEST_F(LinuxSystemTest, WritesAFileWholeOrLeavesTheOldOne) {
    const mode_t mask = ::umask(027);
    system.writeFile(folder / "KRVWINPR.OK", "old");
    ::umask(mask);
    struct stat status {};
    ASSERT_EQ(::stat((folder / "KRVWINPR.OK").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);

    const int fullDisk = ended(start([this] {
        limitFileSize(1000);
        return errorOf([this] { system.writeFile(folder / "KRVWINPR.OK", std::string(5000, 'x')); });
    }));
    EXPECT_EQ(fullDisk, runtime::errDiskFull);
    EXPECT_EQ(get(folder / "KRVWINPR.OK"), "old");

    EXPECT_EQ(errorOf([this] { system.writeFile(folder / "KRVWINPR.OK\\x", "x"); }), runtime::errPathNotFound);
    EXPECT_EQ(errorOf([this] { system.writeFile("/dev/null", "x"); }), runtime::errPathFileAccess);
    EXPECT_EQ(folder.names(), std::set<std::string>{"KRVWINPR.OK"});
}

TEST_F(LinuxSystemTest, WritesUnderExactlyTheGivenNameInTheFolderFound) {
    std::filesystem::create_directory(folder / "Übergabe");
    put(folder / "Übergabe/liste.out", "old");
    system.writeFile(folder / "ÜBERGABE\\LISTE.OUT", "1");
    system.appendFile(folder / "übergabe\\Liste.OUT", "2");
    EXPECT_EQ(get(folder / "Übergabe/liste.out"), "old");
    EXPECT_EQ(get(folder / "Übergabe/LISTE.OUT"), "1");
    EXPECT_EQ(get(folder / "Übergabe/Liste.OUT"), "2");
}

TEST_F(LinuxSystemTest, RewritesAFileInItsPlace) {
    std::filesystem::create_directory(folder / "LASER");
    const std::string file = folder / "LASER/KRVWin.M1";
    put(file, "old");
    ::chmod(file.c_str(), 0751);
    std::filesystem::create_symlink("LASER/KRVWin.M1", folder / "link");
    system.rewriteFile(folder / "laser\\KRVWIN.m1", "new");
    EXPECT_EQ(get(file), "new");
    system.rewriteFile(folder / "link", "newer");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(get(file), "newer");
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0751U);

    const int fullDisk = ended(start([&, this] {
        limitFileSize(1000);
        return errorOf([&, this] { system.rewriteFile(file, std::string(5000, 'x')); });
    }));
    EXPECT_EQ(fullDisk, runtime::errDiskFull);
    const int killed = ended(start([&, this] {
        limitFileSize(1000);
        ::signal(SIGXFSZ, SIG_DFL);
        return errorOf([&, this] { system.rewriteFile(file, std::string(5000, 'x')); });
    }));
    EXPECT_EQ(killed, -SIGXFSZ);
    EXPECT_EQ(get(file), "newer");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "LASER"), {}), 1);

    EXPECT_EQ(errorOf([&, this] { system.rewriteFile(folder / "missing", "x"); }), runtime::errFileNotFound);
    EXPECT_EQ(errorOf([&, this] { system.rewriteFile(folder / "nowhere/x", "x"); }), runtime::errPathNotFound);
    EXPECT_EQ(errorOf([&, this] { system.rewriteFile(folder / "LASER", "x"); }), runtime::errPathFileAccess);
    EXPECT_EQ(errorOf([&, this] { system.rewriteFile("/dev/null", "x"); }), runtime::errPathFileAccess);
    EXPECT_EQ(folder.names(), (std::set<std::string>{"LASER", "link"}));
}

// Root may write everything, so it becomes somebody else.
TEST_F(LinuxSystemTest, RewritesNothingThatMayNotBeWritten) {
    put(folder / "file", "old");
    ::chmod((folder / "").c_str(), 0777);
    const auto rewriteAsUser = [this] {
        return ended(start([this] {
            constexpr uid_t nobody = 65534;
            if (::getuid() == 0 && ::setuid(nobody) != 0) {
                return 98;
            }
            return errorOf([this] { system.rewriteFile(folder / "file", "new"); });
        }));
    };
    ::chmod((folder / "file").c_str(), 0444);
    EXPECT_EQ(rewriteAsUser(), runtime::errPermissionDenied);
    ::chmod((folder / "file").c_str(), 0666);
    ::chmod((folder / "").c_str(), 0555);
    EXPECT_EQ(rewriteAsUser(), runtime::errPermissionDenied);
    EXPECT_EQ(get(folder / "file"), "old");
    ::chmod((folder / "").c_str(), 0777);
    EXPECT_EQ(rewriteAsUser(), 0);
    EXPECT_EQ(get(folder / "file"), "new");
}

TEST_F(LinuxSystemTest, TakesTheCodePageFromEnvironmentSettingsAndLocale) {
    const Variable all("LC_ALL", "en_US.UTF-8");
    const auto numberNow = [this] { return LinuxSystem(0, nullptr, settings).dosCodePageNumber(); };
    const auto store = [this](std::string_view text) {
        settings.setText(platform::SettingsRoot::localMachine, R"(SYSTEM\CurrentControlSet\Control\Nls\CodePage)",
                         "OEMCP", text);
    };
    {
        const Variable none("KRVWINPR_CODEPAGE", nullptr);
        EXPECT_EQ(numberNow(), 437);
        store("852");
        EXPECT_EQ(numberNow(), 852);
        store("85x");
        EXPECT_EQ(numberNow(), 437);
        store("850");
    }
    const Variable wrong("KRVWINPR_CODEPAGE", "932");
    EXPECT_EQ(numberNow(), 850);
}

TEST_F(LinuxSystemTest, TellsTheTimeOfTheUsersZone) {
    const Variable zone("TZ", "XYZ-05:30");
    ::tzset();
    const std::time_t before = std::time(nullptr) + 19800;
    const runtime::DateTime now = system.localTime();
    const auto seconds = (now.hour * 60 + now.minute) * 60 + now.second - before % 86400;
    EXPECT_TRUE(seconds == 0 || seconds == 1 || seconds == 1 - 86400) << seconds;
    EXPECT_GT(now.year, 2000);
}

TEST_F(LinuxSystemTest, AMissingModuleIsNamed) {
    std::string message;
    EXPECT_EQ(errorOf([] { moduleEntry("nosuch"); }, &message), runtime::errFileNotFound);
    EXPECT_NE(message.find("krvwinpr-nosuch.so"), std::string::npos) << message;
}

}  // namespace
