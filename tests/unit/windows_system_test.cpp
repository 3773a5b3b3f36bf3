// The port System on Windows, beside what ports_test.cpp asks of every system.
#include "platform/windows/windows_system.h"

#include <array>
#include <thread>
#include <vector>

#include "platform/windows/files.h"
#include "platform/windows/windows_locale.h"
#include "support/ports_test.h"
#include "windows_support.h"

namespace {

using namespace windows_support;
using namespace platform_windows;

class WindowsSystemTest : public testing::Test {
protected:
    int writing(const std::string& path) {
        return errorOf([&] { system.writeFile(path, "x"); });
    }

    TemporaryFolder folder;
    const std::string file = folder / "KRVWINPR.OK";
    WindowsSystem system;
};

TEST(WindowsCommandLine, TailIsWhatStandsBehindTheProgramsName) {
    const std::vector<std::pair<std::wstring, std::wstring>> table = {
        {L"KRVWinPr", L""},
        {L"KRVWinPr.exe DRUCK.OUT  KEINEGRAFIK \"Laser 1\" ", L" DRUCK.OUT  KEINEGRAFIK \"Laser 1\" "},
        {L"C:\\Mein\"Pro gramm\".exe /WAIT", L" gramm\".exe /WAIT"},
        {L"\"C:\\Program Files\\KRVWinPr.exe\" \"a b\" c\\\"d", L" \"a b\" c\\\"d"},
        {L"\"C:\\KRVWinPr.exe\"DRUCK.OUT", L"DRUCK.OUT"},
        {L"\"C:\\KRVWinPr.exe", L""},
        {L"KRVWinPr\tx", L"\tx"},
        {L" x", L" x"},
        {L"", L""},
    };
    for (const auto& [line, tail] : table) {
        EXPECT_EQ(commandLineTail(line), tail) << narrow(line);
    }
}

TEST_F(WindowsSystemTest, ReadsAndWritesBelowAnyFolder) {
    // Longer than the system's old limit.
    const std::string deep = folder / std::string(200, 'd');
    const std::string longest = deep + "\\" + std::string(100, 'f');
    ASSERT_NE(::CreateDirectoryW((LR"(\\?\)" + widen(deep)).c_str(), nullptr), 0);
    system.writeFile(longest, "eins");
    system.appendFile(longest, "zwei");
    EXPECT_EQ(system.readFile(longest), "einszwei");
    EXPECT_TRUE(system.fileExists(longest));
    ::DeleteFileW((LR"(\\?\)" + widen(longest)).c_str());
    EXPECT_FALSE(system.fileExists("NUL"));
}

TEST(WindowsPath, ALongOneTakesTheFormWithoutALimit) {
    const std::string name(250, 'x');
    EXPECT_EQ(nativePath("C:/a/./" + name), widen(R"(\\?\C:\a\)" + name));
    EXPECT_EQ(nativePath(R"(\\srv\share\)" + name), widen(R"(\\?\UNC\srv\share\)" + name));
    EXPECT_EQ(nativePath(R"(\\srv\share\x)"), LR"(\\srv\share\x)");
    for (const std::string& path : {R"(C:\a\)" + name, R"(\\srv\share\)" + name, std::string(R"(C:\a)")}) {
        EXPECT_EQ(shownPath(nativePath(path)), path);
    }
}

TEST_F(WindowsSystemTest, SaysWhichFileFailedAndWhy) {
    const FileHandle lock = openShared(folder / "locked", GENERIC_WRITE, 0, CREATE_NEW);
    struct Fault {
        std::string path;
        int number;
        std::string shown;
    };
    const std::vector<Fault> faults = {
        {folder / "missing", runtime::errFileNotFound, folder / "missing (Windows-Fehler 2: "},
        {folder / "nowhere/x", runtime::errPathNotFound, folder / "nowhere\\x (der Ordner fehlt"},
        {folder / "locked\\x", runtime::errPathNotFound, "Windows-Fehler 3"},
        {folder / "locked", runtime::errPermissionDenied, "ein anderes Programm benutzt die Datei"},
        {"C:\\con", runtime::errPathFileAccess, "das ist ein Gerät"},
        {"", runtime::errBadFileName, "(so darf eine Datei nicht heißen; Windows-Fehler 123: "},
        {std::string("a\0b", 3), runtime::errBadFileName, "a (so darf"},
        {folder / "a?b", runtime::errBadFileName, "a?b (so darf"},
    };
    for (const Fault& fault : faults) {
        std::string detail;
        EXPECT_EQ(errorOf([&] { system.readFile(fault.path); }, &detail), fault.number) << detail;
        EXPECT_NE(detail.find(fault.shown), std::string::npos) << detail;
    }
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
    std::thread closing([&other] {
        ::Sleep(100);
        other.reset();
    });
    system.writeFile(file, "whole");
    closing.join();

    other = openShared(file, GENERIC_READ, FILE_SHARE_READ);
    EXPECT_EQ(writing(file), runtime::errPermissionDenied);
    EXPECT_EQ(errorOf([&] { system.rewriteFile(file, "x"); }), runtime::errPermissionDenied);
    EXPECT_EQ(errorOf([&] { system.appendFile(file, "x"); }), runtime::errPermissionDenied);
    EXPECT_EQ(get(file), "whole");
    EXPECT_EQ(folder.names(), std::set<std::string>{"KRVWINPR.OK"});

    // Others may have it open for anything while it is read, and append what is not overwritten.
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    other.reset();
    other = openShared(file, FILE_APPEND_DATA | DELETE, share);
    EXPECT_EQ(system.readFile(file), "whole");
    DWORD count = 0;
    ::WriteFile(other.get(), "zwei", 4, &count, nullptr);
    system.appendFile(file, "drei");
    ::WriteFile(other.get(), "vier", 4, &count, nullptr);
    EXPECT_EQ(system.readFile(file), "wholezweidreivier");
}

TEST_F(WindowsSystemTest, KeepsNameAndAttributesAndReadOnlyFiles) {
    put(file, "old");
    ::SetFileAttributesW(widen(file).c_str(), FILE_ATTRIBUTE_HIDDEN);
    const DWORD attributes = ::GetFileAttributesW(widen(file).c_str());  // Wine may not keep it at all
    system.rewriteFile(folder / "krvwinpr.ok", "new");
    EXPECT_EQ(get(file), "new");
    EXPECT_EQ(::GetFileAttributesW(widen(file).c_str()), attributes);

    ::SetFileAttributesW(widen(file).c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(writing(file), runtime::errPermissionDenied);
    EXPECT_EQ(errorOf([&] { system.rewriteFile(file, "x"); }), runtime::errPermissionDenied);
    EXPECT_EQ(get(file), "new");
    EXPECT_EQ(folder.names(), std::set<std::string>{"KRVWINPR.OK"});
    ::SetFileAttributesW(widen(file).c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(writing(folder / "a*b"), runtime::errBadFileName);
}

TEST_F(WindowsSystemTest, TextInTheUsersCodePageReplacesWhatIsNotThere) {
    EXPECT_EQ(system.toSystemCodePage("Größe € ☺ Ω ő \xFF"),
              "Gr\xF6\xDF"
              "e \x80 ? ? ? ?");
    put(file, "[a]\nk=\xFC\n");
    EXPECT_EQ(system.openProfile(file)->text("a", "k", ""), "ü");
}

TEST(WindowsLocale, TranslatesThePicturesOfTheSystem) {
    const std::vector<std::pair<std::string, std::string>> table = {
        {"dd.MM.yyyy", "dd.MM.yyyy"},
        {"d/M/yy", "d/M/yy"},
        {"d. M. yyyy '\xD0\xB3.'", "d. M. yyyy \xD0\xB3."},
        {"yyyy'-'MM'-'dd", "yyyy-MM-dd"},
        {"d.M.y", "d.M.yy"},
        {"d.M.yyyyy", "d.M.yyyy"},
        {"h:mm:ss tt", "h:mm:ss tt"},
        {"tth:m:s t", "tth:m:s tt"},
        {"HH''mm", "HHmm"},
        {"h 'o''clock'", "h o'clock"},
        {"HH'h'mm", ""},
        {"ddd dd.MM.yyyy", ""},
        {"dd-MMM-yyyy", ""},
        {"gg yyyy", ""},
        {"'unfinished", ""},
        {"H.mm.ss ''''", "H.mm.ss '"},
        {"yyyy年M月d日", "yyyy年M月d日"},
        {"", ""},
    };
    for (const auto& [picture, pattern] : table) {
        EXPECT_EQ(patternOfPicture(picture), pattern) << picture;
    }
}

// Counts for processes that start after it was set.
TEST_F(WindowsSystemTest, DISABLED_ScreenResolutionAsExitCode) {
    ::ExitProcess(static_cast<UINT>(system.screenDpiX() + system.screenDpiY()));
}

TEST_F(WindowsSystemTest, SeesTheRealResolutionOfTheScreen) {
    // Windows, unlike Wine, tells it only to a program whose manifest asks for it; this one has that of the product.
    std::array<wchar_t, 20> aware{};
    ::QueryActCtxSettingsW(0, nullptr, L"http://schemas.microsoft.com/SMI/2005/WindowsSettings", L"dpiAware",
                           aware.data(), aware.size(), nullptr);
    EXPECT_STREQ(aware.data(), L"true");

    const wchar_t* key = LR"(Control Panel\Desktop)";
    const auto resolutionSetTo = [&](DWORD dpi) {
        ::RegSetKeyValueW(HKEY_CURRENT_USER, key, L"LogPixels", REG_DWORD, &dpi, sizeof(dpi));
        std::wstring command =
            L"x --gtest_filter=*ScreenResolutionAsExitCode --gtest_also_run_disabled_tests --gtest_brief=1";
        const std::wstring program = widen(system.programDirectory() + "\\" + system.programFileName());
        STARTUPINFOW start{};
        start.cb = sizeof(start);
        PROCESS_INFORMATION started{};
        EXPECT_NE(::CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                   &start, &started),
                  0);
        const KernelHandle thread(started.hThread);
        const KernelHandle process(started.hProcess);
        ::WaitForSingleObject(process.get(), 30'000);
        DWORD code = 0;
        ::GetExitCodeProcess(process.get(), &code);
        return code;
    };
    EXPECT_EQ(resolutionSetTo(120), 240U);
    EXPECT_EQ(resolutionSetTo(96), 192U);
    ::RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"LogPixels");
}

}  // namespace

// The prefix in which the tests run is set up like the Windows of a German user.
platform::System& support::systemPort() {
    static WindowsSystem system;
    return system;
}

std::string support::deviceIn(const TemporaryFolder&) { return "C:\\NUL"; }

bool support::onWine() { return windows_support::onWine(); }
