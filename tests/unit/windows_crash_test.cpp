// Reports of crashes on Windows: how they are written where something is in the way, and how 32-bit stacks are read.
#include <array>
#include <cstdint>

#include "platform/crash/report_log.h"
#include "platform/windows/crash/crash_handlers.h"
#include "platform/windows/crash/crash_report.h"
#include "platform/windows/crash/report_file.h"
#include "platform/windows/crash/stack_walk.h"
#include "platform/windows/files.h"
#include "platform/windows/places.h"

#include "windows_calls.h"
#include "windows_support.h"

namespace {

using namespace windows_support;
using namespace platform_windows;
using namespace platform_windows::crash;

std::string entry(const std::string& number, std::size_t size = 0) {
    const std::string mark = "Fehlerbericht " + number + " =====\r\n";
    return "\r\n===== " + mark + std::string(size, 'x') + "\r\n===== Ende, " + mark;
}

std::vector<std::uintptr_t> found(const platform::crash::Trace& trace) {
    std::vector<std::uintptr_t> result;
    for (std::size_t i = 0; i < trace.size(); ++i) {
        result.push_back(trace.at(i));
    }
    return result;
}

TEST(WindowsCrash, FollowsFramesAsFarAsTheyLieOnTheStack) {
    // Each has the next one's address and, behind it, that of the instruction to return to.
    std::array<std::uintptr_t, 8> stack{};
    const auto at = [&](std::size_t index) { return reinterpret_cast<std::uintptr_t>(&stack[index]); };
    const StackRange range{at(0), at(7) + sizeof(stack[0])};
    stack = {0, 0, at(4), 101, at(6), 201, 0, 301};
    platform::crash::Trace all;
    walkFrames(at(2), range, all, 0);
    EXPECT_EQ(found(all), (std::vector<std::uintptr_t>{100, 200, 300}));
    platform::crash::Trace outer;
    walkFrames(at(2), range, outer, 2);
    EXPECT_EQ(found(outer), std::vector<std::uintptr_t>{300});
    // Overwritten: it leads back, besides words, out of the stack, or half out of it.
    for (const std::uintptr_t next : {at(2), at(4) + 1, range.end + 64, at(7), std::uintptr_t{8}}) {
        stack[2] = next;
        platform::crash::Trace trace;
        walkFrames(at(2), range, trace, 0);
        EXPECT_EQ(found(trace), std::vector<std::uintptr_t>{100}) << next - at(0);
    }
}

class WindowsCrashLog : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string file = folder / "KRVWinPr.ERR";
    const KernelPath log{nativePath(file)};
    const Pauses pauses;
};

TEST_F(WindowsCrashLog, GrowsByWholeEntriesAndLosesTheOldest) {
    FileHandle other;
    Pauses::begin([&] { other.reset(); });
    EXPECT_EQ(appendEntry(log, entry("1")), 0U);
    put(file, entry("1") + "halb");
    other = openShared(file, GENERIC_READ, 0);
    EXPECT_EQ(appendEntry(log, entry("2")), 0U) << "waits for others";
    EXPECT_EQ(get(file), entry("1") + "halb" + entry("2"));

    const std::string middle = entry("3", 500'000);
    const std::string large = entry("4", 500'000);
    put(file, entry("1") + middle + large);
    EXPECT_EQ(appendEntry(log, entry("5", 300'000)), 0U);
    EXPECT_EQ(get(file), large.substr(2) + entry("5", 300'000));
}

TEST_F(WindowsCrashLog, StaysAsItIsWhereTheDiskIsFull) {
    const Calls<decltype(&::WriteFile)> write{&::WriteFile};
    const std::string before = entry("1") + entry("2", 600'000);
    put(file, before);
    for (const std::size_t size : {100, 600'000}) {  // behind the others, and too much for all of them
        write.refuse([](HANDLE to, auto...) -> DWORD {
            ::SetFilePointer(to, 50, nullptr, FILE_CURRENT);  // for so much there is room
            return ::SetEndOfFile(to) != 0 ? ERROR_DISK_FULL : 0;
        });
        EXPECT_EQ(appendEntry(log, entry("3", size)), DWORD{ERROR_DISK_FULL});
        write.refuse(nullptr);
        EXPECT_TRUE(get(file) == before) << size;
        EXPECT_EQ(folder.names(), std::set<std::string>{"KRVWinPr.ERR"});
    }
}

// For a process of its own: a crash, and another one where its report looks for the names of routines.
TEST(WindowsCrash, DISABLED_Within) {
    volatile int* volatile nowhere = nullptr;
    // As a process that offers a report: the crash of such a one starts no other.
    prepareReport(reinterpret_cast<platform::crash::SymbolTable>(sizeof(int)), nativePath("KRVWinPr.ERR"), true);
    installHandlers();
    activity().hostWaits = true;
    *nowhere = 1;
}

TEST_F(WindowsCrashLog, IsWrittenAlthoughItCrashesToo) {
    std::wstring command = L"x --gtest_also_run_disabled_tests --gtest_filter=*DISABLED_Within";
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION started{};
    ASSERT_NE(::CreateProcessW(programFile().c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               widen(folder / "").c_str(), &start, &started),
              0);
    const KernelHandle process(started.hProcess);
    const KernelHandle thread(started.hThread);
    ::WaitForSingleObject(process.get(), INFINITE);
    DWORD code = 1;
    ::GetExitCodeProcess(process.get(), &code);
    EXPECT_EQ(code, 0U);
    const std::string text = get(file);
    EXPECT_EQ(platform::crash::nextEntry(text).text.size() + 4, text.size()) << text;
    EXPECT_NE(text.find("Zugriffsverletzung (0xc0000005) beim Schreiben nach 0x0"), std::string::npos) << text;
    EXPECT_NE(text.find("wartete und hat KRVWINPR.OK bekommen"), std::string::npos) << text;
    EXPECT_EQ(get(folder / "KRVWINPR.OK"), "Alles OK, Korvano kann weitermachen!\r\n");
}

}  // namespace
