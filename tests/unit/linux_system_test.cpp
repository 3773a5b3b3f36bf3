// The port System on Linux, beside what ports_test.cpp asks of every system.
#include "platform/linux/linux_system.h"
#include "platform/linux/linux_user_files.h"
#include "platform/linux/linux_xml_files.h"

#include <sys/resource.h>

#include <ctime>
#include <vector>

#include "linux_support.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/module.h"
#include "platform/linux/unfinished_file.h"

namespace {

using namespace linux_support;
using namespace platform_linux;

class LinuxSystemTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string file = folder / "file";
    LinuxSettingsStore settings{folder / "settings.ini"};
    LinuxSystem system{0, nullptr, settings};
};

TEST_F(LinuxSystemTest, CommandTailKeepsEachArgumentWhole) {
    const std::vector<const char*> arguments = {"KRVWinPr", "HP Laser 1", "", "/WAIT", "A.OUT \"Laser 1\"", "x\"y z"};
    EXPECT_EQ(LinuxSystem(1, arguments.data(), settings).commandTail(), "");
    EXPECT_EQ(LinuxSystem(6, arguments.data(), settings).commandTail(),
              "\"HP Laser 1\" \"\" /WAIT A.OUT \"Laser 1\" x\"y z");
}

TEST_F(LinuxSystemTest, ReadsWhatTheFileHoldsAndNotWhatItSays) {
    EXPECT_NE(system.readFile("/proc/self/status"), "");  // says that it has no length
    EXPECT_EQ(errorOf([this] { system.readFile("/proc/self/mem"); }), runtime::errDeviceIo);
    // A profile is read up to some length, as it was when it was opened; of two sections of one name the first counts.
    put(file, "[a]\nk=1\n[b]\n[A]\nm=1" + std::string(3'000'000, '\n') + "[c]\nl=1");
    const auto profile = system.openProfile(file);
    put(file, "");
    EXPECT_EQ(profile->text("a", "k", "Vorgabe"), "1");
    EXPECT_EQ(profile->text("a", "m", "Vorgabe"), "Vorgabe");
    EXPECT_EQ(profile->text("c", "l", "Vorgabe"), "Vorgabe");
}

TEST_F(LinuxSystemTest, WritesUnderExactlyTheGivenName) {
    const mode_t mask = ::umask(027);
    system.writeFile(folder / "FILE", "1");
    system.appendFile(folder / "File", "2");
    put(file, "old");
    system.writeFile(folder / "FILE", "3");
    ::umask(mask);
    EXPECT_EQ(get(file) + get(folder / "FILE") + get(folder / "File"), "old32");
    EXPECT_EQ(modeOf(folder / "FILE"), 0640U);
}

TEST_F(LinuxSystemTest, AFullDiskOrADeathMeanwhileLeavesTheOldFile) {
    put(file, "old");
    const std::string tooMuch(5000, 'x');
    const auto onFullDisk = [](sighandler_t handler, const std::function<void()>& write) {
        return ended(start([&] {
            const rlimit limit{1000, 1000};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            ::signal(SIGXFSZ, handler);
            return errorOf(write);
        }));
    };
    EXPECT_EQ(onFullDisk(SIG_IGN, [&] { system.writeFile(file, tooMuch); }), runtime::errDiskFull);
    EXPECT_EQ(onFullDisk(SIG_IGN, [&] { system.rewriteFile(file, tooMuch); }), runtime::errDiskFull);
    EXPECT_EQ(onFullDisk(SIG_IGN, [&] { system.appendFile(file, tooMuch); }), runtime::errDiskFull);
    EXPECT_EQ(onFullDisk(SIG_DFL, [&] { system.rewriteFile(file, tooMuch); }), -SIGXFSZ);
    EXPECT_EQ(get(file), "old");
    EXPECT_EQ(folder.names(), std::set<std::string>{"file"});
}

TEST_F(LinuxSystemTest, WritesWithWhateverTheFolderAllows) {
    put(file, "old and long");
    const auto writes = [this](int error, const std::vector<long>& refused) {
        return ended(start([&] {
            refuseCalls(error, refused);
            return errorOf([this] { system.writeFile(folder / "FILE", "new"); });
        }));
    };
    for (const int error : {EPERM, EACCES, EBUSY}) {
        EXPECT_EQ(writes(error, {SYS_rename}), 0) << "written over";
        EXPECT_EQ(get(file), "new");
        put(file, "old and long");
    }
    EXPECT_EQ(writes(ENOSPC, {SYS_rename}), runtime::errDiskFull);
    EXPECT_EQ(writes(EPERM, {SYS_rename, SYS_ftruncate}), runtime::errPermissionDenied);
    EXPECT_EQ(get(file), "old and long");
    EXPECT_EQ(writes(EINTR, {SYS_close}), 0) << "closed all the same";
    EXPECT_EQ(get(file), "new");
    const auto rewrites = ended(start([this] {
        refuseCalls(EPERM, {SYS_linkat});
        return errorOf([this] { system.rewriteFile(file, "again"); });
    }));
    EXPECT_EQ(rewrites, 0);
    EXPECT_EQ(get(file), "again");
    EXPECT_EQ(folder.names(), std::set<std::string>{"file"}) << "the name in other letters is this file's";
}

TEST_F(LinuxSystemTest, FindsNamesThatAnEmulatorWroteInTheBytesOfDos) {
    put(folder / "R\x9A-ST\x8E\x99.OUT", "Liste");
    EXPECT_EQ(system.readFile(folder / "rü-stäö.out"), "Liste");
    EXPECT_EQ(errorOf([&] { system.readFile(folder / "ru-stäö.out"); }), runtime::errFileNotFound);
}

TEST_F(LinuxSystemTest, RemovesWhatKilledProcessesLeft) {
    const std::set<std::string> kept = {".krvwinpr-new", ".krvwinpr-used", ".krvwinpr-Other", "krvwinpr-other"};
    for (const std::string& name : kept) {
        put(folder / name, "");
        makeOld(folder / name, std::chrono::hours{name == ".krvwinpr-new" ? 1 : 30});
    }
    for (const char* left : {".krvwinpr-4711-0", ".krvwinpr-x7"}) {
        put(folder / left, "");
        makeOld(folder / left, std::chrono::hours{30});
    }
    const int used = ::open((folder / ".krvwinpr-used").c_str(), O_RDONLY);
    markInUse(used);
    system.writeFile(folder / "KRVWINPR.OK", "x");
    ::close(used);
    std::set<std::string> names = folder.names();
    EXPECT_EQ(names.erase("KRVWINPR.OK"), 1U);
    EXPECT_EQ(names, kept);
}

TEST_F(LinuxSystemTest, FollowsNobodyElsesLinkToTheLog) {
    std::filesystem::create_symlink("file", folder / "LINK");
    system.appendFile(folder / "LINK", "1");
    std::filesystem::create_symlink(folder / "LINK", folder / "LOG");
    system.appendFile(folder / "LOG", "2");
    EXPECT_EQ(get(file), "12");
    if (::lchown((folder / "LINK").c_str(), nobody, nobody) != 0) {
        GTEST_SKIP() << "only root can make somebody else's link";
    }
    std::string detail;
    EXPECT_EQ(errorOf([this] { system.appendFile(folder / "LOG", "3"); }, &detail), runtime::errPermissionDenied);
    EXPECT_NE(detail.find("ein anderer Benutzer"), std::string::npos) << detail;
    EXPECT_EQ(get(file), "12");
}

TEST_F(LinuxSystemTest, WhatRootMakesInAUsersFolderIsTheUsers) {
    if (::chown((folder / "").c_str(), nobody, nobody) != 0) {
        GTEST_SKIP() << "only root can";
    }
    system.writeFile(folder / "KRVWINPR.OK", "x");
    system.appendFile(folder / "KRVWinPr.LOG", "x");
    LinuxSettingsStore store(folder / "config/KRVWinPr/settings.ini");
    ASSERT_TRUE(store.setText(platform::SettingsRoot::currentUser, "a", "b", "c") && store.commit());
    const std::vector<std::string> made = {"KRVWINPR.OK",
                                           "KRVWinPr.LOG",
                                           "config",
                                           "config/KRVWinPr",
                                           "config/KRVWinPr/settings.ini",
                                           "config/KRVWinPr/settings.ini.lock"};
    for (const std::string& name : made) {
        EXPECT_EQ(ownerOf(folder / name), nobody) << name;
    }
}

TEST_F(LinuxSystemTest, DrivesAreDroppedOrLeadWhereTheSettingsSay) {
    std::filesystem::create_directories(folder / "Dos/Bilder");
    put(folder / "Dos/Bilder/LOGO.BMP", "x");
    EXPECT_TRUE(system.fileExists("c:" + (folder / "dos\\BILDER\\logo.bmp")));
    EXPECT_FALSE(system.fileExists("C:\\bilder\\logo.bmp"));
    settings.setText(platform::SettingsRoot::currentUser, R"(Software\Velmora\KRVWinPr\3.0\Laufwerke)", "c",
                     folder / "Dos/");
    EXPECT_TRUE(system.fileExists("C:\\bilder\\logo.bmp"));
    EXPECT_TRUE(system.fileExists("c:bilder/logo.bmp")) << "from the drive's folder";
    system.writeFile("C:\\BILDER\\neu", "y");
    std::filesystem::current_path(folder / "Dos/Bilder");
    EXPECT_EQ(system.readFile("C:neu"), "y") << "from the current directory";
    put("D:neu", "z");
    EXPECT_EQ(system.readFile("D:neu"), "z") << "as it is written";
    std::filesystem::current_path("/");
}

// Root may write everything, so it becomes somebody else.
TEST_F(LinuxSystemTest, RewritingKeepsLinkAndRightsAndNeedsThem) {
    const std::string target = folder / "folder/target";
    std::filesystem::create_directory(folder / "folder");
    put(target, "old");
    std::filesystem::create_symlink("folder/target", file);
    const auto rewrite = [&](mode_t ofFolder, mode_t ofFile) {
        ::chmod((folder / "").c_str(), 0755);
        ::chmod((folder / "folder").c_str(), ofFolder);
        ::chmod(target.c_str(), ofFile);
        return ended(start([this] {
            const bool changed = ::getuid() != 0 || ::setuid(nobody) == 0;
            return changed ? errorOf([this] { system.rewriteFile(file, "new"); }) : 98;
        }));
    };
    EXPECT_EQ(rewrite(0777, 0444), runtime::errPermissionDenied);
    EXPECT_EQ(rewrite(0555, 0666), runtime::errPermissionDenied);
    EXPECT_EQ(get(target), "old");
    EXPECT_EQ(rewrite(0777, 0765), 0);
    EXPECT_EQ(get(target), "new");
    EXPECT_EQ(modeOf(target), 0765U);
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "folder"), {}), 1);

    const std::string pipe = support::deviceIn(folder);
    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(errorOf([&, this] { system.rewriteFile(pipe, "x"); }), runtime::errPathFileAccess);
    ::close(reader);
}

TEST_F(LinuxSystemTest, TakesTheCodePageFromEnvironmentSettingsAndLocale) {
    const Variable all("LC_ALL", "en_US.UTF-8");
    for (const auto& [variable, setting, number] : std::vector<std::tuple<const char*, std::string, int>>{
             {"932", "850", 850}, {"866", "850", 866}, {nullptr, "852x", 437}}) {
        const Variable page("KRVWINPR_CODEPAGE", variable);
        settings.setText(platform::SettingsRoot::localMachine, R"(SYSTEM\CurrentControlSet\Control\Nls\CodePage)",
                         "OEMCP", setting);
        EXPECT_EQ(LinuxSystem(0, nullptr, settings).dosCodePageNumber(), number);
    }
}

TEST_F(LinuxSystemTest, TellsTheTimeOfTheUsersZone) {
    const Variable zone("TZ", "XYZ-05:30");
    ::tzset();
    const std::time_t before = std::time(nullptr);
    const runtime::DateTime now = system.localTime();
    tm time{now.second, now.minute, now.hour, now.day, now.month - 1, now.year - 1900, 0, 0, 0, 0, nullptr};
    EXPECT_NEAR(static_cast<double>(::timegm(&time) - before), 19800, 1);
}

TEST_F(LinuxSystemTest, AMissingModuleIsNamed) {
    std::string detail;
    EXPECT_EQ(errorOf([] { moduleEntry("nosuch"); }, &detail), runtime::errFileNotFound);
    EXPECT_NE(detail.find("krvwinpr-nosuch.so"), std::string::npos) << detail;
}

}  // namespace

platform::System& support::systemPort() {
    static const linux_support::Variable codePage("KRVWINPR_CODEPAGE", "850");
    static const linux_support::Variable german("LC_ALL", "de_DE.UTF-8");
    static LinuxSettingsStore settings("");
    static LinuxSystem system(0, nullptr, settings);
    return system;
}

std::string support::deviceIn(const TemporaryFolder& folder) {
    ::mkfifo((folder / "pipe").c_str(), 0600);
    return folder / "pipe";
}

std::unique_ptr<platform::XmlFiles> support::xmlFilesPort() {
    return std::make_unique<platform_linux::LinuxXmlFiles>();
}
bool support::parsesByTheBook() { return true; }

std::unique_ptr<platform::UserFiles> support::userFilesPort() {
    return std::make_unique<platform_linux::LinuxUserFiles>();
}
