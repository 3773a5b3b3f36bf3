// Written files on Windows, where others hold them or the system fails: whole in any case, and nothing left.
#include "platform/windows/files.h"

#include <winternl.h>

#include <array>

#include "platform/windows/places.h"
#include "platform/windows/windows_system.h"

#include "windows_calls.h"
#include "windows_support.h"

namespace {

using namespace windows_support;
using namespace platform_windows;

decltype(&::NtSetInformationFile) setInformation() {
    return reinterpret_cast<decltype(&::NtSetInformationFile)>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "NtSetInformationFile")));
}

class WindowsFiles : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string file = folder / "KRVWINPR.OK";
    const std::wstring native = nativePath(file);
    const std::set<std::string> alone = {"KRVWINPR.OK"};
    const Pauses pauses;
    const Calls<decltype(&::CreateFileW)> create{&::CreateFileW};
    const Calls<decltype(&::WriteFile)> write{&::WriteFile};
    const Calls<decltype(&::SetEndOfFile)> cut{&::SetEndOfFile};
    const Calls<decltype(&::FlushFileBuffers), 1> flush{&::FlushFileBuffers};
    const Calls<decltype(&::NtSetInformationFile)> inform{setInformation()};
    const Calls<decltype(&::DeleteFileW)> remove{&::DeleteFileW};
    const Calls<decltype(&::ReplaceFileW)> exchange{&::ReplaceFileW};
};

TEST_F(WindowsFiles, AreWholeAndLeaveNothingWhicheverCallFails) {
    const std::string text(600, 'n');
    const auto replace = [&] { return replaceFile(native, text, Durability::powerFailure); };
    struct Way {
        std::string before;
        std::string after;
        std::function<DWORD()> go;
    };
    const std::vector<Way> ways = {{"", text, replace},
                                   {"old", text, replace},
                                   {std::string(900, 'o'), text, replace},
                                   {"old", text, [&] { return rewriteFile(native, text); }},
                                   {"", text, [&] { return createFile(native, text); }},
                                   {"old", "old" + text, [&] { return appendToFile(native, text); }}};
    int calls = 0;
    const auto failing = [&](std::size_t way, const auto& function, DWORD code, int first, int last) {
        ::DeleteFileW(native.c_str());
        if (!ways[way].before.empty()) {
            put(file, ways[way].before);
        }
        calls = 0;
        function.refuse([&](auto...) {
            const int call = calls++;
            return call < first || call > last ? 0 : code;
        });
        const DWORD error = ways[way].go();
        function.refuse(nullptr);
        const testing::Message where = testing::Message()
                                       << "way " << way << ", " << typeid(function).name() << ", call " << first
                                       << " to " << last << ", code " << code << ": " << error;
        EXPECT_TRUE(get(file) == (error == 0 ? ways[way].after : ways[way].before)) << where;
        if (folder.names().size() != (get(file).empty() ? 0 : 1)) {
            EXPECT_EQ(rewriteFile(native, "x"), 0U) << where;
            EXPECT_EQ(folder.names(), alone) << where << ", left for good";
        }
        return calls > first;
    };
    const auto checkAll = [&](const auto& function) {
        for (std::size_t way = 0; way < ways.size(); ++way) {
            for (const DWORD code : {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_DISK_FULL}) {
                for (int first = 0; failing(way, function, code, first, 1000); ++first) {
                    failing(way, function, code, first, first);
                }
            }
        }
    };
    checkAll(create), checkAll(write), checkAll(cut), checkAll(flush), checkAll(inform), checkAll(remove);
    checkAll(exchange);
}

TEST_F(WindowsFiles, AppearWhereScannersOpenThemAndRightsAreMissing) {
    FileHandle scanner;  // forbids to move and to delete what it has open
    create.refuse([&](auto path, DWORD access, auto, auto, DWORD how, auto...) -> DWORD {
        if (how == OPEN_EXISTING && access == DELETE && !scanner) {
            scanner = openShared(narrow(path), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        }
        return 0;
    });
    const auto appears = [&](const char* content) {
        EXPECT_EQ(replaceFile(native, content), 0U);
        scanner.reset();
        EXPECT_EQ(get(file), content);
        EXPECT_EQ(folder.names(), alone);
    };
    appears("new");

    // Nobody may delete what is in the folder: neither new files nor, in another folder, the old one.
    create.refuse([](auto, DWORD access, auto, auto, DWORD how, auto...) -> DWORD {
        return how == OPEN_EXISTING && (access & DELETE) != 0 ? ERROR_ACCESS_DENIED : 0;
    });
    appears("newer");
    ::DeleteFileW(native.c_str());
    appears("new again");
    create.refuse([&](auto path, DWORD access, auto...) -> DWORD {
        return path == native && (access & DELETE) != 0 ? ERROR_ACCESS_DENIED : 0;
    });
    inform.refuse([](auto, auto, auto, auto, auto kind) -> DWORD {
        return kind == FileRenameInformation ? ERROR_ACCESS_DENIED : 0;
    });
    appears("newest");

    create.refuse(
        [](auto, DWORD access, auto...) -> DWORD { return access == FILE_READ_ATTRIBUTES ? 0 : ERROR_ACCESS_DENIED; });
    for (const DWORD error : {replaceFile(native, "x"), rewriteFile(native, "x"), appendToFile(native, "x")}) {
        EXPECT_EQ(error, DWORD{ERROR_ACCESS_DENIED});
    }
    EXPECT_EQ(Pauses::count, 0) << "nothing to wait for";
}

TEST_F(WindowsFiles, KeepTheOldContentWhereReplacingStopsHalfWay) {
    put(file, "old");
    FileHandle scanner;
    exchange.refuse([&](auto old, auto fresh, auto aside, auto...) -> DWORD {
        ::MoveFileExW(old, aside, 0);
        scanner = openShared(narrow(fresh), GENERIC_READ, FILE_SHARE_READ);
        return ERROR_UNABLE_TO_MOVE_REPLACEMENT_2;
    });
    EXPECT_EQ(rewriteFile(native, "new"), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(get(file), "old");
}

TEST_F(WindowsFiles, WaitForThoseWhoHoldThem) {
    FileHandle other;
    const auto heldWith = [&](DWORD share, const std::function<DWORD()>& work) {
        Pauses::begin([&other] { other.reset(); });
        other = openShared(file, GENERIC_READ | GENERIC_WRITE, share, OPEN_ALWAYS);
        EXPECT_EQ(work(), 0U);
        EXPECT_EQ(Pauses::count, 3);
    };
    put(file, "eins");
    std::string content;
    heldWith(0, [&] { return readWholeFile(native, content); });
    EXPECT_EQ(content, "eins");
    heldWith(FILE_SHARE_READ, [&] { return appendToFile(native, "zwei"); });
    heldWith(FILE_SHARE_READ, [&] { return rewriteFile(native, content + "drei"); });
    EXPECT_EQ(get(file), "einsdrei");
    heldWith(FILE_SHARE_READ, [&] { return removeFile(native); });
    EXPECT_EQ(folder.names().size(), 0U);
    heldWith(FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, [&] {
        ::DeleteFileW(native.c_str());  // it goes with the last one who has it open
        return replaceFile(native, "vier");
    });
    EXPECT_EQ(get(file), "vier");
}

TEST_F(WindowsFiles, MissingOnesAreFoundWhereTheSystemPutThem) {
    const wchar_t* const variable = L"LOCALAPPDATA";
    std::array<wchar_t, MAX_PATH> before{};
    ::GetEnvironmentVariableW(variable, before.data(), before.size());
    ::SetEnvironmentVariableW(variable, widen(folder / "Daten").c_str());
    const std::string other = (folder / "Daten\\VirtualStore") + file.substr(2);
    std::filesystem::create_directories(pathOf(other).parent_path());
    put(other, "x");
    for (const auto& [path, hint] : {std::pair(file, "(Windows hat sie umgeleitet nach „" + other + "“; das Programm"),
                                     std::pair(folder / "x", std::string("(Windows-Fehler 2"))}) {
        std::string detail;
        EXPECT_EQ(errorOf([&, &name = path] { WindowsSystem().readFile(name); }, &detail), runtime::errFileNotFound);
        EXPECT_NE(detail.find(hint), std::string::npos) << detail;
    }
    ::SetEnvironmentVariableW(variable, nullptr);
    EXPECT_EQ(localData(), before.data());
    ::SetEnvironmentVariableW(variable, before.data());
}

}  // namespace
