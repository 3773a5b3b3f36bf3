// The messenger's ports on Windows.
#include "platform/windows/messenger/windows_messenger_system.h"
#include "platform/windows/messenger/windows_order_folder.h"
#include "platform/windows/places.h"
#include "platform/windows/windows_system.h"

#include <aclapi.h>

#include <array>
#include <atomic>

#include "windows_calls.h"
#include "windows_support.h"

namespace {

using namespace windows_support;
using namespace platform_windows;
using namespace platform_windows::messenger;
using Kind = platform::MessengerEvent::Kind;
using Holder = platform::OrderFolder::Holder;

constexpr std::chrono::milliseconds soon{5000};
constexpr std::chrono::milliseconds now{0};

class Messenger : public testing::Test {
protected:
    // A user's setting, which other tests may have left.
    Messenger() {
        ::RegDeleteKeyValueW(HKEY_CURRENT_USER, LR"(Software\Velmora\KRVWinPr\3.0\Bote)", L"Ereignisse");
        folder = system.open(place / "");
    }

    std::string file(std::string_view name) { return place / name; }

    TemporaryFolder place;
    WindowsMessengerSystem system;
    std::unique_ptr<platform::OrderFolder> folder;
};

TEST_F(Messenger, HearsOfOrdersAndOfNothingElse) {
    EXPECT_TRUE(folder->reportsChanges());
    put(file("KRVWINPR.OK"), "x");
    put(file("KRV1234.AUF"), "x");
    EXPECT_TRUE(system.wait(std::chrono::milliseconds{100}).empty());
    for (const std::string name : {"krv00001.Tmp", "KRV00002.AUF", "KRVWINPR.BOT"}) {
        put(file(name), "x");
        const auto events = system.wait(soon);
        ASSERT_EQ(events.size(), 1U) << name;
        EXPECT_EQ(events[0].kind, Kind::folderChanged);
        EXPECT_EQ(events[0].folder, folder.get());
    }
    folder.reset();  // what the system still says of it is nobody's
    put(file("KRV00003.AUF"), "x");
    EXPECT_TRUE(system.wait(std::chrono::milliseconds{100}).empty());
}

TEST_F(Messenger, OneHoldsAFolderUntilItGoesAndTakesOverWhatIsLeft) {
    put(file("KRVWINPR.BOT"),
        "left by somebody who is gone, and longer than what follows, so that none of it may be left");
    EXPECT_EQ(folder->holder(), "");
    EXPECT_EQ(folder->hold(), Holder::ours);
    EXPECT_EQ(folder->hold(), Holder::ours);
    const auto other = system.open(place / "");
    EXPECT_EQ(other->hold(), Holder::another);
    EXPECT_EQ(other->holder(), system.identity());
    folder.reset();
    EXPECT_EQ(place.names(), std::set<std::string>{});
    EXPECT_EQ(other->hold(), Holder::ours);
}

TEST_F(Messenger, ListsAndReadsOrdersThatAreFilesOfTheirOwn) {
    put(file("krv00001.auf"), std::string(3000, 'x'));
    put(file("KRV00002.ERG.TXT"), "x");
    std::filesystem::create_directory(pathOf(file("KRV00003.AUF")));
    std::filesystem::create_hard_link(pathOf(file("krv00001.auf")), pathOf(file("KRV00004.TMP")));
    std::filesystem::last_write_time(pathOf(file("KRV00004.TMP")),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours{2});
    std::map<std::string, std::int64_t> ages;
    for (const platform::OrderFile& found : folder->files()) {
        ages[found.name] = found.age;
    }
    EXPECT_EQ(ages.size(), 3U);
    EXPECT_LT(ages["KRV00004.TMP"], -7000);
    EXPECT_LT(ages["KRV00003.AUF"], 60);
    for (const char* name : {"KRV00003.AUF", "KRV00004.TMP"}) {
        EXPECT_EQ(errorOf([&] { folder->read(name); }), runtime::errPermissionDenied) << name;
    }
    EXPECT_TRUE(folder->remove("KRV00004.TMP"));
    EXPECT_EQ(folder->read("KRV00001.AUF").size(), 1025U);
    EXPECT_TRUE(folder->remove("KRV00001.AUF") && folder->remove("KRV00001.AUF"));
    EXPECT_EQ(errorOf([&] { folder->read("KRV00001.AUF"); }), runtime::errFileNotFound);

    const Pauses pauses;
    FileHandle emulator = openShared(file("KRV00005.AUF"), GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW);
    Pauses::begin([&] { emulator.reset(); });
    EXPECT_EQ(folder->read("KRV00005.AUF"), "") << "the emulator has it open for a moment";
}

// Somebody else's file, in a folder in which he has these rights.
ACCESS_MASK rightsOfOthers = 0;
DWORD WINAPI securityOfOthers(HANDLE, SE_OBJECT_TYPE, SECURITY_INFORMATION what, PSID* owner, PSID*, PACL* rights,
                              PACL*, PSECURITY_DESCRIPTOR* memory) {
    static SID guest{SID_REVISION, 1, {SECURITY_NT_AUTHORITY}, {7}};
    static SID folderOwner{SID_REVISION, 1, {SECURITY_NT_AUTHORITY}, {4}};
    static ACL list{};
    *owner = (what & DACL_SECURITY_INFORMATION) != 0 ? &folderOwner : &guest;
    if (rights != nullptr) {
        *rights = &list;
    }
    *memory = nullptr;
    return ERROR_SUCCESS;
}
DWORD WINAPI effectiveRights(PACL, PTRUSTEE_W, PACCESS_MASK rights) {
    *rights = rightsOfOthers;
    return ERROR_SUCCESS;
}

TEST_F(Messenger, TakesNoOrderOfSomebodyWhoMayNotMakeFilesThere) {
    put(file("KRV00001.AUF"), "x");
    const Detour security(&::GetSecurityInfo, securityOfOthers);
    const Detour rights(&::GetEffectiveRightsFromAclW, effectiveRights);
    rightsOfOthers = FILE_GENERIC_READ;
    EXPECT_EQ(errorOf([&] { folder->read("KRV00001.AUF"); }), runtime::errPermissionDenied);
    rightsOfOthers |= FILE_ADD_FILE;
    EXPECT_EQ(folder->read("KRV00001.AUF"), "x");
}

TEST_F(Messenger, AnswersAreMadeOnceAndChangedInPlace) {
    EXPECT_TRUE(folder->make("KRV00001.ERG", "A 0A1B2C3D\r\n"));
    EXPECT_FALSE(folder->make("krv00001.erg", "A x"));
    const FileHandle host = openShared(file("KRV00001.ERG"), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    folder->change("KRV00001.ERG", "E 0A1B2C3D\r\nDrucker fehlt\r\n");
    EXPECT_EQ(get(file("KRV00001.ERG")), "E 0A1B2C3D\r\nDrucker fehlt\r\n");
    folder->change("KRV00001.ERG", "O 0A1B2C3D\r\n");
    EXPECT_EQ(get(file("KRV00001.ERG")), "O 0A1B2C3D\r\n");
    put(file("KRV00002.AUF"), "x");
    EXPECT_FALSE(folder->rename("KRV00002.AUF", "KRV00001.erg"));
    EXPECT_TRUE(folder->rename("KRV00002.AUF", "KRV00002.ABG"));
    EXPECT_EQ(folder->completionMark(), "");
    WindowsSystem().writeFile(file("KRVWINPR.OK"), "x");
    const std::string mark = folder->completionMark();
    EXPECT_NE(mark, "");
    EXPECT_EQ(folder->completionMark(), mark);
    WindowsSystem().writeFile(file("krvwinpr.ok"), "x");
    EXPECT_NE(folder->completionMark(), mark);
}

TEST_F(Messenger, AFolderThatWentStaysGoneAndItsNewOneIsAnother) {
    std::filesystem::create_directory(pathOf(file("FIRMA")));
    const auto firma = system.open(file("FIRMA"));
    EXPECT_TRUE(firma->isAt(file("firma/../FIRMA/")));
    EXPECT_FALSE(firma->isAt(place / "") || firma->isAt(file("x")) || firma->isAt(""));
    std::filesystem::rename(pathOf(file("FIRMA")), pathOf(file("ALT")));
    EXPECT_EQ(errorOf([&] { firma->files(); }), runtime::errPathNotFound);
    std::filesystem::create_directory(pathOf(file("FIRMA")));
    EXPECT_EQ(errorOf([&] { firma->files(); }), runtime::errPathNotFound);
    EXPECT_TRUE(system.open(file("FIRMA"))->files().empty());
    for (const char* name : {"fehlt", "ALT/../KRVWINPR.OK"}) {
        put(file("KRVWINPR.OK"), "");
        EXPECT_EQ(errorOf([&] { system.open(file(name)); }), runtime::errPathNotFound) << name;
    }
}

TEST(FarFolders, AMachineThatDoesNotAnswerKeepsNobodyWaiting) {
    const KernelHandle answers(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    std::atomic<int> asked = 0;
    FarFolders folders(
        [&](const std::wstring& path) {
            ++asked;
            ::WaitForSingleObject(answers.get(), INFINITE);
            return path == LR"(\\NAS\da)" ? 0UL : DWORD{ERROR_FILE_NOT_FOUND};
        },
        20);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(errorOf([&] { folders.demand(LR"(\\NAS\da)"); }), runtime::errPathNotFound);
    }
    EXPECT_EQ(asked, 1) << "until it answers";
    ::SetEvent(answers.get());
    int tries = 1000;
    while (--tries > 0 && errorOf([&] { folders.demand(LR"(\\NAS\da)"); }) != 0) {
    }
    EXPECT_GT(tries, 0);
    EXPECT_EQ(errorOf([&] { folders.demand(LR"(\\NAS\weg)"); }), runtime::errPathNotFound);
    EXPECT_TRUE(FarFolders::isFar(LR"(\\NAS\da)") && FarFolders::isFar(LR"(\\?\UNC\NAS\da)"));
    EXPECT_FALSE(FarFolders::isFar(LR"(C:\FIRMA)"));
}

TEST(EventLog, ShowsTheLineItself) {
    std::wstring line = L"Zeile %1";
    std::array<wchar_t*, 1> lines = {line.data()};
    std::array<wchar_t, 80> shown{};
    ::FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_ARGUMENT_ARRAY, nullptr, 1, 0, shown.data(), 80,
                     reinterpret_cast<va_list*>(lines.data()));
    EXPECT_EQ(std::wstring(shown.data()), line + L"\r\n");
}

// What the next test starts: leaves behind how it was called, tells of the completion file, and crashes.
TEST(MessengerChild, DISABLED_Run) {
    WindowsSystem system;
    put("call.txt", system.commandTail());
    system.tellStarter();
    ::TerminateProcess(::GetCurrentProcess(), EXCEPTION_ACCESS_VIOLATION);
}

TEST_F(Messenger, StartsAProgramInTheFolderAndTellsTheCompletionFileBeforeTheEnd) {
    const std::string tail = R"( --gtest_also_run_disabled_tests --gtest_filter=MessengerChild.* "Müller  & Söhne)";
    const platform::ProgramId program = system.start(narrow(programFile()), *folder, tail);
    EXPECT_NE(system.processNumber(program), 0U);
    std::vector<platform::MessengerEvent> events;
    while (events.size() < 2) {
        const auto more = system.wait(std::chrono::seconds{30});
        ASSERT_FALSE(more.empty());
        events.insert(events.end(), more.begin(), more.end());
    }
    EXPECT_EQ(get(file("call.txt")), tail);
    EXPECT_EQ(events[0].kind, Kind::completionWritten);
    EXPECT_EQ(events[1].kind, Kind::programEnded);
    EXPECT_EQ(events[1].how, "Zugriffsverletzung (0xC0000005)");
    EXPECT_TRUE(events[0].program == program && events[1].program == program && events.size() == 2);
    EXPECT_EQ(howItEnded(0) + "|" + howItEnded(3), "|Rückgabewert 3");
    EXPECT_EQ(errorOf([&] { system.start(file("fehlt.exe"), *folder, ""); }), runtime::errFileNotFound);
    put(file("KRVWinPr.cmd"), "");
    EXPECT_NE(errorOf([&] { system.start(file("KRVWinPr.cmd"), *folder, "& calc"); }), 0);
    EXPECT_TRUE(system.wait(now).empty());
}

}  // namespace
