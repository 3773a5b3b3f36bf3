#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "platform/crash/report_log.h"
#include "platform/crash/report_text.h"

namespace {

using namespace platform::crash;

constexpr std::uintptr_t programBase = 0x400000;

// Three routines, the second of a library: from 0x100, 0x200 and 0x300.
std::vector<std::uint32_t> programTable() {
    std::vector<std::uint32_t> words = {3, 0, 0, 0, 0, 0x100, 0x200, 0x300, 1, 0, 16};
    std::memcpy(&words[1], "0123456789abcdef", 16);
    const std::string names("\0startup.MMain.\0report.DoReport\0", 32);
    words.resize(words.size() + names.size() / 4);
    std::memcpy(&words[11], names.data(), names.size());
    return words;
}
const std::vector<std::uint32_t> table = programTable();

Module moduleAt(std::uintptr_t address) noexcept {
    return address >= programBase ? Module{"KRVWinPr", programBase, table.data()} : Module{};
}

std::string entry(const Trace& trace, int day = 22, std::size_t room = longestEntry,
                  std::string_view argument = "/WAIT") {
    std::vector<char> memory(room);
    FixedText text(memory);
    ErrorFacts error{2026, 11, day, 5, 6, 7, 8, 4711, 11, "Zugriff\nverletzt", HostFate::released};
    platform::Activity activity;
    activity.printFile = "RECHNUNG.OUT";
    activity.page = 3;
    const std::array arguments = {argument};
    const std::array modules = {Module{"KRVWinPr", programBase, table.data()}};
    const std::array system = {Fact{"System", "Linux"}, Fact{"Bildschirm", ""}};
    addEntry(text, error, activity, trace, moduleAt, arguments, modules, system);
    return std::string(text.view());
}

// Where each of the texts stands behind the one before it.
void expectInOrder(const std::string& text, std::initializer_list<const char*> parts) {
    std::size_t place = 0;
    for (const char* part : parts) {
        place = text.find(part, place);
        ASSERT_NE(place, std::string::npos) << part << " in\n" << text;
    }
}

TEST(CrashReport, SaysWhatHappenedAndNamesRoutinesFromTheOutermostInward) {
    Trace trace;
    trace.add(programBase + 0x304, true);
    trace.add(programBase + 0x250);
    // A call that never returns is the last thing in its routine: the address behind it is the next one's.
    trace.add(programBase + 0x200);
    trace.add(0x1234);
    const std::string text = entry(trace);
    expectInOrder(text, {"===== Fehlerbericht 20261122-050607008-4711 =====\r\n", "22.11.2026 05:06:07 UTC",
                         "11: Zugriff.verletzt", "RECHNUNG.OUT", "Seite:              3\r\n",
                         "hat KRVWINPR.OK bekommen", "  1    ? 0x1233\r\n", "  2    startup.MMain.", "(KRVWinPr+0x1ff)",
                         "  3    KRVWinPr", "(KRVWinPr+0x24f)", "  4    report.DoReport", "(KRVWinPr+0x304)",
                         "\"/WAIT\"", "KRVWinPr 0123456789abcdef", "System:             Linux\r\n",
                         "===== Ende, Fehlerbericht 20261122-050607008-4711 =====\r\n"});
    EXPECT_EQ(text.find("Bildschirm"), std::string::npos);
    EXPECT_EQ(nextEntry(text).mark, "Fehlerbericht 20261122-050607008-4711");
}

TEST(CrashReport, KeepsBothEndsOfAnEndlessRecursionAndItsOwnLastLine) {
    Trace trace;
    trace.add(programBase + 0x301, true);
    for (int i = 0; i < 100000; ++i) {
        trace.add(programBase + 0x390);
    }
    trace.add(programBase + 0x110);
    const std::string text = entry(trace);
    expectInOrder(text, {"  1    startup.MMain.", "  2    report.DoReport", " 32    report.", "… 99922 weitere …",
                         "99955  report.", "100002 report.DoReport", "+0x301)"});
    EXPECT_FALSE(nextEntry(entry(trace, 22, 2000, std::string(100000, 'x'))).text.empty());
}

TEST(CrashLog, FindsWholeEntriesAndKeepsTheYoungest) {
    const std::string first = entry({}, 1);
    const std::string second = entry({}, 2);
    const std::string half = first.substr(0, first.size() / 2);
    const std::string spoiled = "von Hand\r\n" + half + second + half;
    EXPECT_EQ(nextEntry(spoiled).mark, "Fehlerbericht 20261102-050607008-4711");
    EXPECT_TRUE(nextEntry(half).text.empty());

    EXPECT_EQ(keptPart(spoiled, 100), spoiled);
    const std::string youngest = second.substr(std::strlen("\r\n"));
    EXPECT_EQ(keptPart(first + second, longestLog - youngest.size()), youngest);
    EXPECT_EQ(keptPart(first + second, longestLog - youngest.size() + 1), "");
    EXPECT_EQ(keptPart(first, 2 * longestLog), "");
}

}  // namespace
