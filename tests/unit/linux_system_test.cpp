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

TEST_F(LinuxSystemTest, FindsFilesAsTheHostWritesTheirNames) {
    std::filesystem::create_directories(folder / "Daten/Übergabe");
    put(folder / "Daten/Übergabe/Rechnung.out", "mixed");
    const std::string host = folder / "DATEN\\übergabe\\RECHNUNG.OUT";
    EXPECT_EQ(system.readFile(host), "mixed");
    EXPECT_TRUE(system.fileExists(host));

    // Of several the first in byte order, capitals before small letters; the exact one before all.
    put(folder / "Daten/Übergabe/rechnung.out", "small");
    EXPECT_EQ(system.readFile(host), "mixed");
    put(folder / "Daten/Übergabe/RECHNUNG.OUT", "exact");
    EXPECT_EQ(system.readFile(host), "exact");
    EXPECT_EQ(system.readFile(folder / "daten\\.\\..//Daten\\ÜBERGABE\\rechnung.out"), "small");
    EXPECT_FALSE(system.fileExists(folder / "DATEN"));
    EXPECT_FALSE(system.fileExists(folder / "Daten\\Rechnung.out"));

    // What is written is named exactly so, in the folder found, also relative to the current one.
    const std::string before = system.currentDirectory();
    std::filesystem::current_path(folder / "Daten");
    system.writeFile("übergabe\\KRVWINPR.OK", "1");
    system.writeFile("KRVWINPR.OK", "");
    system.appendFile("ÜBERGABE\\rechnung.OUT", "2");
    std::filesystem::current_path(before);
    EXPECT_EQ(get(folder / "Daten/Übergabe/KRVWINPR.OK"), "1");
    EXPECT_TRUE(system.fileExists(folder / "Daten/KRVWINPR.OK"));
    EXPECT_EQ(get(folder / "Daten/Übergabe/rechnung.OUT"), "2");
}

TEST_F(LinuxSystemTest, ReadsEveryByteAndSaysWhatIsNoFile) {
    std::string content(3'000'000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i) {
        content[i] = static_cast<char>(i * 7);
    }
    put(folder / "big", content);
    put(folder / "empty", "");
    EXPECT_TRUE(system.readFile(folder / "big") == content);
    EXPECT_EQ(system.readFile(folder / "empty"), "");
    EXPECT_NE(system.readFile("/proc/self/status"), "");  // says that it has no length

    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    put(folder / "secret", "x");
    ::chmod((folder / "secret").c_str(), 0);
    ::chmod((folder / "").c_str(), 0755);
    EXPECT_EQ(ended(start([this] {
                  becomeOrdinaryUser();
                  return errorOf([this] { system.readFile(folder / "secret"); });
              })),
              runtime::errPermissionDenied);
    const std::vector<std::pair<std::string, int>> faults = {
        {folder / "missing", runtime::errFileNotFound},    {folder / "nowhere\\missing", runtime::errPathNotFound},
        {folder / "", runtime::errPathFileAccess},         {folder / "pipe", runtime::errPathFileAccess},
        {"/dev/zero", runtime::errPathFileAccess},         {"", runtime::errBadFileName},
        {std::string("a\0b", 3), runtime::errBadFileName}, {folder / std::string(300, 'x'), runtime::errBadFileName},
        {"/proc/self/mem", runtime::errDeviceIo},
    };
    for (const auto& [path, number] : faults) {
        std::string message;
        EXPECT_EQ(errorOf([&, &file = path] { system.readFile(file); }, &message), number) << path;
        EXPECT_NE(message.find(path.substr(path.find_last_of("\\/") + 1)), std::string::npos) << message;
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

    std::filesystem::create_directory(folder / "taken");
    const auto write = [this](const std::string& path) { return errorOf([&] { system.writeFile(path, "x"); }); };
    EXPECT_EQ(write(folder / "taken"), runtime::errPathFileAccess);
    EXPECT_EQ(write(folder / "KRVWINPR.OK\\x"), runtime::errPathNotFound);
    EXPECT_EQ(write(folder / "nowhere\\x"), runtime::errPathNotFound);
    EXPECT_EQ(write("/dev/null"), runtime::errPathFileAccess);
    EXPECT_NE(write("/proc/x"), 0);
    EXPECT_EQ(write(""), runtime::errBadFileName);
    EXPECT_EQ(folder.names(), (std::set<std::string>{"KRVWINPR.OK", "taken"}));
}

TEST_F(LinuxSystemTest, AppendsAllOrNothing) {
    system.appendFile(folder / "log", "eins\n");
    system.appendFile(folder / "log", "zwei\n");
    const int fullDisk = ended(start([this] {
        limitFileSize(100);
        return errorOf([this] { system.appendFile(folder / "log", std::string(200, 'x')); });
    }));
    EXPECT_EQ(fullDisk, runtime::errDiskFull);
    EXPECT_EQ(get(folder / "log"), "eins\nzwei\n");
    EXPECT_EQ(errorOf([this] { system.appendFile("/dev/full", "x"); }), runtime::errDiskFull);
    EXPECT_EQ(errorOf([this] { system.appendFile(folder / "", "x"); }), runtime::errPathFileAccess);
    std::filesystem::create_symlink("nowhere/log", folder / "leads nowhere");
    EXPECT_EQ(errorOf([this] { system.appendFile(folder / "leads nowhere", "x"); }), runtime::errPathNotFound);

    // Lines of several processes do not get into each other.
    std::vector<pid_t> writers;
    for (const char letter : {'a', 'b', 'c'}) {
        writers.push_back(start([this, letter] {
            for (int i = 0; i < 200; ++i) {
                system.appendFile(folder / "shared", std::string(50, letter) + "\n");
            }
            return 0;
        }));
    }
    for (const pid_t writer : writers) {
        EXPECT_EQ(ended(writer), 0);
    }
    const std::string shared = get(folder / "shared");
    ASSERT_EQ(shared.size(), 3U * 200 * 51);
    for (std::size_t at = 0; at < shared.size(); at += 51) {
        ASSERT_EQ(shared.substr(at, 51), std::string(50, shared[at]) + "\n");
    }
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
    const Variable russian("KRVWINPR_CODEPAGE", "866");
    LinuxSystem other(0, nullptr, settings);
    EXPECT_EQ(other.fromDosCodePage("\x8F\xE0\xA8\x01"), "При☺");
}

TEST_F(LinuxSystemTest, TellsTheTimeOfTheUsersZone) {
    const Variable zone("TZ", "XYZ-05:30");
    ::tzset();
    const std::time_t before = std::time(nullptr) + 19800;
    const runtime::DateTime now = system.localTime();
    std::tm expected{};
    ::gmtime_r(&before, &expected);
    const int seconds =
        ((now.hour - expected.tm_hour) * 60 + now.minute - expected.tm_min) * 60 + now.second - expected.tm_sec;
    EXPECT_TRUE(seconds == 0 || seconds == 1 || seconds == 1 - 86400) << seconds;
    EXPECT_GT(now.year, 2000);
    EXPECT_TRUE(now.millisecond >= 0 && now.millisecond < 1000);
}

TEST_F(LinuxSystemTest, ModulesLieBesideTheProgramAndTheScreenIsOptional) {
    EXPECT_TRUE(std::filesystem::exists(system.programDirectory() + "/" + system.programFileName()));
    EXPECT_EQ(moduleEntry("screen"), moduleEntry("screen"));
    std::string message;
    EXPECT_EQ(errorOf([] { moduleEntry("nosuch"); }, &message), runtime::errFileNotFound);
    EXPECT_NE(message.find("krvwinpr-nosuch.so"), std::string::npos) << message;
    const Variable display("DISPLAY", ":4711");
    EXPECT_EQ(system.screenDpiX(), 96);
}

}  // namespace
