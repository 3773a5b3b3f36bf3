#include "platform/windows/windows_system.h"

#include <array>
#include <thread>
#include <vector>

#include "platform/windows/files.h"
#include "platform/windows/windows_locale.h"
#include "support/profile_table.h"
#include "windows_support.h"

namespace {

using namespace windows_support;
using namespace platform_windows;

class WindowsSystemTest : public testing::Test {
protected:
    int writing(const std::string& path, std::string* detail = nullptr) {
        return errorOf([&] { system.writeFile(path, "x"); }, detail);
    }

    TemporaryFolder folder;
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

TEST_F(WindowsSystemTest, ReadsFilesWhateverTheirNamesLookLike) {
    std::string content(3'000'000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i) {
        content[i] = static_cast<char>(i * 7);
    }
    put(folder / "Übergabe.OUT", content);
    EXPECT_TRUE(system.readFile(folder / "ÜBERGABE.out") == content);
    EXPECT_TRUE(system.fileExists(folder / "/./übergabe.OUT"));
    EXPECT_FALSE(system.fileExists(folder / ""));
    EXPECT_FALSE(system.fileExists(folder / "x"));
    EXPECT_FALSE(system.fileExists("NUL"));
    EXPECT_FALSE(system.fileExists(""));

    // Others may have it open for anything.
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const FileHandle other = openShared(folder / "Übergabe.OUT", GENERIC_WRITE | DELETE, share, OPEN_EXISTING);
    EXPECT_EQ(system.readFile(folder / "Übergabe.OUT").size(), content.size());

    // Longer than the system's old limit, and relative to the current directory.
    const std::string deep = folder / std::string(200, 'd');
    const std::string file = deep + "\\" + std::string(100, 'f');
    ASSERT_NE(::CreateDirectoryW((LR"(\\?\)" + widen(deep)).c_str(), nullptr), 0);
    system.writeFile(file, "eins");
    system.appendFile(file, "zwei");
    EXPECT_EQ(system.readFile(file), "einszwei");
    EXPECT_TRUE(system.fileExists(file));
    ::DeleteFileW((LR"(\\?\)" + widen(file)).c_str());
    const std::string before = system.currentDirectory();
    ASSERT_NE(::SetCurrentDirectoryW(widen(folder / "").c_str()), 0);
    system.writeFile("KRVWINPR.OK", "1");
    EXPECT_EQ(system.currentDirectory() + "\\", folder / "");
    ::SetCurrentDirectoryW(widen(before).c_str());
    EXPECT_EQ(get(folder / "KRVWINPR.OK"), "1");
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
    put(folder / "locked", "x");
    const FileHandle lock = openShared(folder / "locked", GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING);
    struct Fault {
        std::string path;
        int number;
        std::string shown;
    };
    const std::vector<Fault> faults = {
        {folder / "missing", runtime::errFileNotFound, folder / "missing (Windows-Fehler 2: "},
        {folder / "nowhere/missing", runtime::errPathNotFound, folder / "nowhere\\missing (der Ordner fehlt"},
        {folder / "locked\\x", runtime::errPathNotFound, "Windows-Fehler 3"},
        {folder / "", runtime::errPathFileAccess, "(das ist ein Ordner"},
        {folder / "locked", runtime::errPermissionDenied, "ein anderes Programm benutzt die Datei"},
        {"C:\\con", runtime::errPathFileAccess, "das ist ein Gerät"},
        {"nul", runtime::errPathFileAccess, "nul (das ist ein Gerät"},
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

TEST_F(WindowsSystemTest, WritesAFileWholeOrLeavesTheOldOne) {
    const std::string file = folder / "KRVWINPR.OK";
    system.writeFile(file, "a longer text");
    system.writeFile(file, "new");
    EXPECT_EQ(get(file), "new");

    put(folder / "fixed", "old");
    ::SetFileAttributesW(widen(folder / "fixed").c_str(), FILE_ATTRIBUTE_READONLY);
    ::CreateDirectoryW(widen(folder / "taken").c_str(), nullptr);
    EXPECT_EQ(writing(folder / "fixed"), runtime::errPermissionDenied);
    EXPECT_EQ(get(folder / "fixed"), "old");
    EXPECT_EQ(writing(folder / "taken"), runtime::errPathFileAccess);
    EXPECT_EQ(writing(folder / "KRVWINPR.OK\\x"), runtime::errPathNotFound);
    EXPECT_EQ(writing(folder / "nowhere\\x"), runtime::errPathNotFound);
    EXPECT_EQ(writing("C:\\PRN"), runtime::errPathFileAccess);
    EXPECT_EQ(writing(folder / "a*b"), runtime::errBadFileName);
    EXPECT_EQ(folder.names(), (std::set<std::string>{"KRVWINPR.OK", "fixed", "taken"}));
}

TEST_F(WindowsSystemTest, WritesAFileThatAnotherProgramKeepsOpen) {
    const std::string file = folder / "KRVWINPR.OK";
    put(file, "an old and longer text");
    FileHandle reader = openShared(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    system.writeFile(file, "new");
    EXPECT_EQ(get(file), "new");
    system.writeFile(file, std::string(50'000, 'x'));
    EXPECT_EQ(get(file), std::string(50'000, 'x'));

    // For a moment only: the file is another one afterwards, and what was read so far stays what it was.
    reader = openShared(file, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    std::thread closing([&reader] {
        ::Sleep(100);
        reader.reset();
    });
    system.writeFile(file, "whole");
    closing.join();
    EXPECT_EQ(get(file), "whole");

    reader = openShared(file, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    std::string detail;
    EXPECT_EQ(writing(file, &detail), runtime::errPermissionDenied) << detail;
    EXPECT_EQ(get(file), "whole");
    EXPECT_EQ(folder.names(), std::set<std::string>{"KRVWINPR.OK"});
}

TEST_F(WindowsSystemTest, RewritesAFileInItsPlace) {
    put(folder / "KRVWin.M1", "old");
    ::SetFileAttributesW(widen(folder / "KRVWin.M1").c_str(), FILE_ATTRIBUTE_HIDDEN);
    const DWORD attributes = ::GetFileAttributesW(widen(folder / "KRVWin.M1").c_str());  // Wine may not keep it at all
    system.rewriteFile(folder / "krvwin.m1", "new");
    EXPECT_EQ(get(folder / "KRVWin.M1"), "new");
    EXPECT_EQ(::GetFileAttributesW(widen(folder / "KRVWin.M1").c_str()), attributes);

    put(folder / "fixed", "old");
    ::SetFileAttributesW(widen(folder / "fixed").c_str(), FILE_ATTRIBUTE_READONLY);
    ::CreateDirectoryW(widen(folder / "taken").c_str(), nullptr);
    const std::vector<std::pair<std::string, int>> faults = {
        {folder / "fixed", runtime::errPermissionDenied},  {folder / "missing", runtime::errFileNotFound},
        {folder / "nowhere\\x", runtime::errPathNotFound}, {folder / "taken", runtime::errPathFileAccess},
        {"C:\\NUL", runtime::errPathFileAccess},
    };
    for (const auto& [path, number] : faults) {
        EXPECT_EQ(errorOf([&, &file = path] { system.rewriteFile(file, "x"); }), number) << path;
    }
    EXPECT_EQ(get(folder / "fixed"), "old");

    const FileHandle reader = openShared(folder / "KRVWin.M1", GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    EXPECT_EQ(errorOf([&] { system.rewriteFile(folder / "KRVWin.M1", "x"); }), runtime::errPermissionDenied);
    EXPECT_EQ(get(folder / "KRVWin.M1"), "new");
    EXPECT_EQ(folder.names(), (std::set<std::string>{"KRVWin.M1", "fixed", "taken"}));
}

TEST_F(WindowsSystemTest, ReadsProfilesAsTheTableSays) {
    for (const support::ProfileCase& row : support::profileCases()) {
        if (row.onWine || !onWine()) {
            put(folder / "Füße.INI", row.content);
            const auto profile = system.openProfile(folder / "füße.ini");
            EXPECT_EQ(profile->text(row.section, row.key, "Vorgabe"), row.value) << row.content;
        }
    }
    put(folder / "ansi.ini", "[a]\nk=\xFC\n");
    EXPECT_EQ(system.openProfile(folder / "ansi.ini")->text("a", "k", ""), "ü");
    for (const std::string& none : {folder / "missing", folder / "", std::string("NUL"), std::string()}) {
        EXPECT_EQ(system.openProfile(none)->text("a", "k", "Vorgabe"), "Vorgabe") << none;
    }
}

TEST_F(WindowsSystemTest, AppendsBehindWhatOthersAppend) {
    const std::string log = folder / "KRVWinPr.LOG";
    system.appendFile(log, "eins\n");
    const FileHandle other = openShared(log, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    DWORD count = 0;
    ::WriteFile(other.get(), "zwei\n", 5, &count, nullptr);
    system.appendFile(log, "drei\n");
    EXPECT_EQ(get(log), "eins\nzwei\ndrei\n");

    const FileHandle lock = openShared(folder / "locked", GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW);
    EXPECT_EQ(errorOf([&] { system.appendFile(folder / "locked", "x"); }), runtime::errPermissionDenied);
    EXPECT_EQ(errorOf([&] { system.appendFile(folder / "nowhere\\x", "x"); }), runtime::errPathNotFound);
    EXPECT_EQ(errorOf([&] { system.appendFile("C:\\NUL", "x"); }), runtime::errPathFileAccess);
}

// The prefix in which the tests run is set up like the Windows of a German user.
TEST_F(WindowsSystemTest, CodePagesAndLocaleAreThoseOfAGermanUser) {
    EXPECT_EQ(system.toSystemCodePage("Größe € ☺ Ω ő"),
              "Gr\xF6\xDF"
              "e \x80 ? ? ?");
    EXPECT_EQ(system.toSystemCodePage("\xFF"), "?");
    EXPECT_EQ(system.fromDosCodePage("\x81\x8E\xE1 \xC9\xCD\xBB\x01\x0D\x1A\x7F\xD5"), "üÄß ╔═╗☺♪→⌂ı");
    EXPECT_EQ(system.fromDosCodePage(std::string_view("A\0~", 3)), "A ~");

    const runtime::Locale& locale = system.locale();
    EXPECT_EQ(locale.language, "de");
    EXPECT_EQ(locale.decimalSeparator, ",");
    EXPECT_EQ(runtime::dateTimeText({2026, 1, 2, 3, 4, 5, 6}, locale), "02.01.2026 03:04:05");
    EXPECT_EQ(locale.trueText, "Wahr");
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

TEST_F(WindowsSystemTest, KnowsItsProgramFile) {
    EXPECT_TRUE(system.fileExists(system.programDirectory() + "\\" + system.programFileName()));
    EXPECT_EQ(system.programFileName(), "windows-tests.exe");
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
