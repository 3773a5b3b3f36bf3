// The port System on Windows, beside what ports_test.cpp asks of every system.
#include "platform/windows/windows_system.h"
#include "platform/windows/windows_settings_store.h"
#include "platform/windows/windows_user_files.h"
#include "platform/windows/windows_xml_files.h"

#include <array>
#include <chrono>

#include "platform/windows/code_page.h"
#include "platform/windows/files.h"
#include "platform/windows/windows_locale.h"

#include "windows_calls.h"
#include "windows_support.h"

namespace {

using namespace windows_support;
using namespace platform_windows;

class WindowsSystemTest : public testing::Test {
protected:
    // What writing in each way leads to.
    std::set<int> errors() {
        return {errorOf([&] { system.writeFile(file, "x"); }), errorOf([&] { system.rewriteFile(file, "x"); })};
    }

    TemporaryFolder folder;
    const std::string file = folder / "KRVWINPR.OK";
    const Pauses pauses;
    WindowsSystem system;
};

TEST(WindowsCommandLine, TailIsWhatStandsBehindTheProgramsName) {
    EXPECT_EQ(commandLineTail(L"KRVWinPr"), L"");
    EXPECT_EQ(commandLineTail(L"KRVWinPr\tA.OUT  \"Laser 1\" "), L"\tA.OUT  \"Laser 1\" ");
    EXPECT_EQ(commandLineTail(L"C:\\Mein\"Pro gramm\".exe /WAIT"), L" gramm\".exe /WAIT");
    EXPECT_EQ(commandLineTail(L"\"C:\\Program Files\\KRVWinPr.exe\"A.OUT \"a b\""), L"A.OUT \"a b\"");
    EXPECT_EQ(commandLineTail(L"\"C:\\KRVWinPr.exe"), L"");
    EXPECT_EQ(commandLineTail(L" x"), L" x");
}

TEST(DosCodePage, IsNeverThatOfASystemSetToUnicode) {
    EXPECT_EQ(dosCodePageOf(437, 850, 850), 437U);
    EXPECT_EQ(dosCodePageOf(CP_UTF8, 852, 850), 852U);
    EXPECT_EQ(dosCodePageOf(CP_UTF8, CP_OEMCP, 850), 850U) << "a language without one";
    EXPECT_EQ(dosCodePageOf(CP_UTF8, 0, CP_UTF8), 850U);
}

TEST_F(WindowsSystemTest, PathsLongerThanTheSystemsOldLimitWork) {
    const std::string deep = folder / std::string(200, 'd');
    const std::string longest = deep + "\\" + std::string(100, 'f');
    ASSERT_NE(::CreateDirectoryW((LR"(\\?\)" + widen(deep)).c_str(), nullptr), 0);
    system.writeFile(longest, "eins");
    EXPECT_EQ(system.readFile(longest), "eins");
    ::DeleteFileW((LR"(\\?\)" + widen(longest)).c_str());

    const std::string name(250, 'x');
    EXPECT_EQ(nativePath("C:/a/./" + name), widen(R"(\\?\C:\a\)" + name));
    EXPECT_EQ(nativePath(R"(\\srv\share\)" + name), widen(R"(\\?\UNC\srv\share\)" + name));
    EXPECT_EQ(nativePath(R"(\\srv\share\x)"), LR"(\\srv\share\x)");
    for (const std::string& path : {R"(C:\a\)" + name, R"(\\srv\share\)" + name}) {
        EXPECT_EQ(shownPath(nativePath(path)), path);
    }
}

TEST_F(WindowsSystemTest, RemovesWhatKilledProcessesLeft) {
    const std::set<std::string> kept = {"krvwinpr-neu.tmp", "krvwinpr-offen.tmp", "krvwinpr.tmp"};
    for (const std::string& name : {*kept.begin(), *kept.rbegin(), std::string("krvwinpr-offen.tmp"),
                                    std::string("krvwinpr-4711-0.tmp"), std::string("krvwinpr-alt.tmp")}) {
        put(folder / name, "");
        std::filesystem::last_write_time(
            pathOf(folder / name),
            std::filesystem::file_time_type::clock::now() - std::chrono::hours{name == "krvwinpr-neu.tmp" ? 1 : 30});
    }
    const FileHandle open = openShared(folder / "krvwinpr-offen.tmp", GENERIC_READ, FILE_SHARE_DELETE, OPEN_EXISTING);
    system.writeFile(file, "x");
    std::set<std::string> names = folder.names();
    EXPECT_EQ(names.erase("KRVWINPR.OK"), 1U);
    EXPECT_EQ(names, kept);
}

TEST_F(WindowsSystemTest, DrivesOfAHostInAnEmulatorLeadWhereTheSettingsSay) {
    WindowsSettingsStore().setText(platform::SettingsRoot::currentUser, R"(Software\Velmora\KRVWinPr\3.0\Laufwerke)",
                                   "c", folder / "Dos\\");
    std::filesystem::create_directories(pathOf(folder / "Dos/Bilder"));
    put(folder / "Dos/Bilder/LOGO.BMP", "x");
    put(folder / "draussen", "");
    EXPECT_FALSE(system.fileExists(R"(C:\bilder\logo.bmp)")) << "its drives are ours where nobody else started it";
    const KernelHandle event(::CreateEventW(nullptr, TRUE, FALSE, L"krv-test-starter"));
    ::SetEnvironmentVariableW(starterVariable, L"krv-test-starter");
    WindowsSystem started;
    EXPECT_TRUE(started.fileExists(R"(C:\bilder\logo.bmp)"));
    EXPECT_TRUE(started.fileExists("c:bilder/logo.bmp")) << "from the drive's folder";
    EXPECT_TRUE(started.fileExists(folder / "draussen")) << "an outer path";
    const std::string before = started.currentDirectory();
    started.changeDirectory(folder / "Dos/Bilder");
    started.writeFile("C:neu", "y");
    started.writeFile(R"(c:\bilder\neu2)", "z");
    EXPECT_EQ(started.readFile(started.currentDirectory() + "\\neu"), "y") << "from the current directory";
    EXPECT_EQ(get(folder / "Dos/Bilder/neu2"), "z");
    started.changeDirectory(before);
    ::RegDeleteKeyW(HKEY_CURRENT_USER, LR"(Software\Velmora\KRVWinPr\3.0\Laufwerke)");
}

TEST_F(WindowsSystemTest, SaysWhichFileFailedAndWhy) {
    const FileHandle lock = openShared(folder / "locked", GENERIC_WRITE, 0, CREATE_NEW);
    const std::vector<std::pair<std::string, std::string>> faults = {
        {folder / "missing", folder / "missing (Windows-Fehler 2: "},
        {folder / "nowhere/x", folder / "nowhere\\x (der Ordner fehlt"},
        {folder / "locked", "ein anderes Programm benutzt die Datei; sie dort schließen; Windows-Fehler 32: "},
        {"C:\\con", "das ist ein Gerät"},
        {std::string("a\0b", 3), "a (so darf"},
    };
    for (const auto& [path, expected] : faults) {
        std::string detail;
        errorOf([&, &name = path] { system.readFile(name); }, &detail);
        EXPECT_NE(detail.find(expected), std::string::npos) << detail;
    }
    EXPECT_FALSE(system.fileExists("NUL"));
    EXPECT_EQ(errorOf([&] { system.readFile(folder / "a?b"); }), runtime::errBadFileName);
    EXPECT_EQ(errorOf([&] { system.appendFile(folder / "locked", "x"); }), runtime::errPermissionDenied);
}

TEST_F(WindowsSystemTest, WritesAFileThatAnotherProgramKeepsOpen) {
    put(file, "an old and longer text");
    FileHandle other = openShared(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    system.writeFile(file, "new");
    EXPECT_EQ(get(file), "new");
    system.writeFile(file, std::string(50'000, 'x'));
    EXPECT_EQ(get(file), std::string(50'000, 'x'));

    // For a moment only: the file is another one afterwards, and what was read so far stays what it was.
    other = openShared(file, GENERIC_READ, FILE_SHARE_READ);
    Pauses::begin([&other] { other.reset(); });
    system.writeFile(file, "whole");
    other = openShared(file, GENERIC_READ, FILE_SHARE_READ);
    EXPECT_EQ(errors(), std::set<int>{runtime::errPermissionDenied});
    EXPECT_EQ(get(file), "whole");
    EXPECT_EQ(folder.names(), std::set<std::string>{"KRVWINPR.OK"});

    // Others may have it open for anything while it is read, and append what is not overwritten.
    other.reset();
    other = openShared(file, FILE_APPEND_DATA | DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    DWORD count = 0;
    ::WriteFile(other.get(), "zwei", 4, &count, nullptr);
    system.appendFile(file, "drei");
    EXPECT_EQ(system.readFile(file), "wholezweidrei");
}

TEST_F(WindowsSystemTest, KeepsAttributesAndReadOnlyFiles) {
    put(file, "old");
    ::SetFileAttributesW(widen(file).c_str(), FILE_ATTRIBUTE_HIDDEN);
    const DWORD attributes = ::GetFileAttributesW(widen(file).c_str());  // Wine may not keep it at all
    system.rewriteFile(folder / "krvwinpr.ok", "new");
    EXPECT_EQ(::GetFileAttributesW(widen(file).c_str()), attributes);
    ::SetFileAttributesW(widen(file).c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(errors(), std::set<int>{runtime::errPermissionDenied});
    EXPECT_EQ(get(file), "new");
    EXPECT_EQ(folder.names(), std::set<std::string>{"KRVWINPR.OK"});
    ::SetFileAttributesW(widen(file).c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(WindowsSystemTest, TextInTheUsersCodePageReplacesWhatIsNotThere) {
    EXPECT_EQ(system.toSystemCodePage("Größe € ☺ Ω ő \xFF"), "Gr\xF6\xDF\x65 \x80 ? ? ? ?");
    put(file, "[a]\nk=\xFC\n");
    EXPECT_EQ(system.openProfile(file)->text("a", "k", ""), "ü");
}

TEST(WindowsLocale, TranslatesThePicturesOfTheSystem) {
    const std::vector<std::pair<std::string, std::string>> table = {
        {"d/M/yy", "d/M/yy"},
        {"d. M. yyyy 'г.'", "d. M. yyyy г."},
        {"yyyy'-'MM'-'dd", "yyyy-MM-dd"},
        {"d.M.y", "d.M.yy"},
        {"d.M.yyyyy", "d.M.yyyy"},
        {"tth:mm:s t", "tth:mm:s tt"},
        {"HH''mm", "HHmm"},
        {"h 'o''clock'", "h o'clock"},
        {"H.mm ''''", "H.mm '"},
    };
    for (const auto& [picture, pattern] : table) {
        EXPECT_EQ(patternOfPicture(picture), pattern) << picture;
    }
    for (const char* picture : {"HH'h'mm", "ddd dd.MM.yyyy", "dd-MMM-yyyy", "gg yyyy", "'unfinished"}) {
        EXPECT_EQ(patternOfPicture(picture), "") << picture;
    }
}

// Windows, unlike Wine, tells the real resolution only to a program whose manifest asks for it.
TEST_F(WindowsSystemTest, SeesTheRealResolutionOfTheScreen) {
    std::array<wchar_t, 20> aware{};
    ::QueryActCtxSettingsW(0, nullptr, L"http://schemas.microsoft.com/SMI/2005/WindowsSettings", L"dpiAware",
                           aware.data(), aware.size(), nullptr);
    EXPECT_STREQ(aware.data(), L"true");
    const ScreenContext screen(::GetDC(nullptr));
    EXPECT_EQ(system.screenDpiX(), ::GetDeviceCaps(screen.get(), LOGPIXELSX));
}

}  // namespace

// The prefix in which the tests run is set up like the Windows of a German user.
platform::System& support::systemPort() {
    static WindowsSystem system;
    return system;
}

std::string support::deviceIn(const TemporaryFolder&) { return "C:\\NUL"; }

std::unique_ptr<platform::XmlFiles> support::xmlFilesPort() {
    return std::make_unique<platform_windows::WindowsXmlFiles>();
}
bool support::parsesByTheBook() { return !windows_support::onWine(); }

std::unique_ptr<platform::UserFiles> support::userFilesPort() {
    return std::make_unique<platform_windows::WindowsUserFiles>();
}
