#include "platform/windows/crash/crash_report.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <span>
#include <string_view>

#include "platform/completion_file.h"
#include "platform/crash/report_text.h"
#include "platform/crash/termination.h"
#include "platform/windows/crash/description.h"
#include "platform/windows/crash/last_throw.h"
#include "platform/windows/crash/modules.h"
#include "platform/windows/crash/report_file.h"
#include "platform/windows/crash/stack_walk.h"
#include "platform/windows/crash/system_facts.h"
#include "platform/windows/crash/utf8_text.h"
#include "platform/windows/second_process.h"
#include "platform/windows/standard_error.h"
#include "platform/windows/unfinished_file.h"
#include "platform/windows/visible_desktop.h"
#include "platform/windows/windows_system.h"
#include "runtime/program.h"

namespace platform_windows::crash {

namespace {

using platform::crash::ErrorFacts;
using platform::crash::FixedText;
using platform::crash::HostFate;
using platform::crash::Trace;

constexpr std::size_t longestLine = 2048;
template <std::size_t size>
using Room = std::array<char, size>;

// With a separator before it.
constexpr auto finishFile = [] {
    std::array<wchar_t, platform::completionFileName.size() + 2> name{L'\\'};
    std::ranges::copy(platform::completionFileName, name.begin() + 1);
    return name;
}();

enum class Place { none, exception, lastThrow, known };

struct Report {
    Place place = Place::none;
    EXCEPTION_RECORD record{};
    CONTEXT context{};
    StackRange stack;
    bool terminated = false;

    Trace trace;
    ErrorFacts facts;
    Room<longestLine> description{};
    Room<longestLine> arguments{};
    Room<platform::crash::longestEntry> room{};
    std::string_view entry;
    bool written = false;
};

constinit platform::Activity theActivity;
constinit KernelPath logFile;
constinit bool offering = false;
constinit Report report;
constinit std::atomic<DWORD> reporter = 0;  // thread
constinit std::size_t nextStep = 0;

void findMoment() noexcept {
    SYSTEMTIME now{};
    ::GetSystemTime(&now);
    ErrorFacts& facts = report.facts;
    facts.year = now.wYear;
    facts.month = now.wMonth;
    facts.day = now.wDay;
    facts.hour = now.wHour;
    facts.minute = now.wMinute;
    facts.second = now.wSecond;
    facts.millisecond = now.wMilliseconds;
    facts.process = ::GetCurrentProcessId();
}

void traceCalls() noexcept {
    if (report.place == Place::exception) {
        walkStack(report.context, report.stack, report.trace);
    } else if (report.place == Place::lastThrow) {
        report.trace = lastThrow();
        if (report.trace.size() == 0) {
            walkOwnStack(report.trace, 0);
        }
    }
}

void describe() noexcept {
    FixedText text(report.description);
    if (report.place == Place::exception) {
        report.facts.number = report.record.ExceptionCode;
        describeException(text, report.record);
    } else if (report.terminated) {
        report.facts.number = platform::crash::describeTermination(text);
    } else {
        return;
    }
    report.facts.description = text.view();
}

void letHostGo() noexcept {
    if (!theActivity.hostWaits) {
        return;
    }
    report.facts.host = HostFate::stillWaiting;
    static Room<MAX_PATH * sizeof(wchar_t)> folder;
    auto* const letters = reinterpret_cast<wchar_t*>(folder.data());
    const DWORD length = ::GetCurrentDirectoryW(MAX_PATH, letters);
    const std::wstring_view path(letters, length < MAX_PATH ? length : 0);
    const KernelPath file(path, std::wstring_view(finishFile.data()).substr(path.ends_with(L'\\') ? 1 : 0));
    if (writeFileAnyway(file, platform::completionFileText) == 0) {
        report.facts.host = HostFate::released;
        theActivity.hostWaits = false;
    }
}

void compose() noexcept {
    FixedText line(report.arguments);
    const std::wstring_view tail = commandLineTail(::GetCommandLineW());
    addUtf8(line, tail.substr(std::min(tail.find_first_not_of(L' '), tail.size())));
    const std::array arguments = {line.view()};
    const std::array modules = {ownModule()};
    FixedText text(report.room);
    platform::crash::addEntry(text, report.facts, theActivity, report.trace, moduleAt, arguments, modules,
                              systemFacts());
    report.entry = text.view();
}

// Where that has failed.
void composeLess() noexcept {
    if (report.entry.empty()) {
        FixedText text(report.room);
        platform::crash::addEntry(text, report.facts, theActivity, {}, moduleAt, {}, {}, {});
        report.entry = text.view();
    }
}

void write() noexcept { report.written = !logFile.empty() && appendEntry(logFile, report.entry) == 0; }

// What a run-time error is has been told before.
void tell() noexcept {
    static Room<longestLine> room;
    FixedText text(room);
    const bool isNews = report.place != Place::lastThrow || report.terminated;
    if (!isNews && !report.written) {
        return;
    }
    text << runtime::programName << ": ";
    if (isNews) {
        text << "Unerwarteter Fehler: " << report.facts.description << (report.written ? "; " : "");
    }
    if (report.written) {
        constexpr std::size_t kernelPrefix = 4;
        text << "Bericht in ";
        addUtf8(text, logFile.view().substr(kernelPrefix));
    }
    text << "\r\n";
    static std::array<wchar_t, longestLine> wide;
    static Room<longestLine> bytes;
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, text.view().data(), static_cast<int>(text.view().size()),
                                             wide.data(), static_cast<int>(wide.size()));
    const int size = ::WideCharToMultiByte(CP_ACP, 0, wide.data(), length, bytes.data(), static_cast<int>(bytes.size()),
                                           nullptr, nullptr);
    writeToStandardError({bytes.data(), static_cast<std::size_t>(size)});
}

// A crash of the one that offers is not offered.
void offer() noexcept {
    if (report.written && !offering && hasVisibleDesktop()) {
        if constexpr (runtime::developmentBuild) {
            ::SetEnvironmentVariableW(L"KRVWINPR_CRASH", nullptr);  // the other process is to live
        }
        startSecondProcess(offerVariable, L"1");
    }
}

using Step = void (*)() noexcept;
constexpr std::array<Step, 5> firstSteps = {findMoment, traceCalls, describe, letHostGo, dropUnfinishedFiles};
constexpr std::array<Step, 5> lastSteps = {compose, composeLess, write, tell, offer};

Step stepAt(std::size_t index) noexcept {
    const std::span<const Step> facts = factSteps();
    for (const std::span<const Step> steps :
         {std::span<const Step>(firstSteps), facts, std::span<const Step>(lastSteps)}) {
        if (index < steps.size()) {
            return steps[index];
        }
        index -= steps.size();
    }
    return nullptr;
}

void doSteps() noexcept {
    // One that crashes is not begun again.
    while (const Step step = stepAt(nextStep++)) {
        step();
    }
}

DWORD WINAPI reportHere(void* /*nothing*/) noexcept {
    reporter = ::GetCurrentThreadId();
    reportAndEnd();
}

}  // namespace

void prepareReport(platform::crash::SymbolTable ownRoutines, std::wstring_view path, bool offers) noexcept {
    offering = offers;
    setOwnRoutines(ownRoutines);
    logFile = KernelPath(path);
}

bool isOffering() noexcept { return offering; }

platform::Activity& activity() noexcept { return theActivity; }

bool isReporting() noexcept { return reporter == ::GetCurrentThreadId(); }

void takeReport() noexcept {
    DWORD thread = 0;
    if (reporter.compare_exchange_strong(thread, ::GetCurrentThreadId())) {
        return;
    }
    if (thread == ::GetCurrentThreadId()) {
        reportAndEnd();
    }
    ::Sleep(INFINITE);
}

void reportOf(const EXCEPTION_POINTERS& exception) noexcept {
    report.place = Place::exception;
    report.record = *exception.ExceptionRecord;
    report.context = *exception.ContextRecord;
    report.stack = stackOf(report.context);
}

void reportOfTermination() noexcept {
    report.place = Place::lastThrow;
    report.terminated = true;
}

void reportOf(std::int64_t number, std::string_view description) noexcept {
    report.place = Place::lastThrow;
    report.facts.number = number;
    report.facts.description = (FixedText(report.description) << description).view();
}

void reportOfAbort(std::size_t without) noexcept {
    report.facts.description = "Abbruch durch das Programm selbst (abort)";
    report.place = Place::known;
    walkOwnStack(report.trace, without + 1);
}

void reportAndEnd() noexcept {
    doSteps();
    ::TerminateProcess(::GetCurrentProcess(), 0);
    ::Sleep(INFINITE);
    __builtin_unreachable();
}

void reportElsewhereAndEnd() noexcept {
    constexpr DWORD patience = 30'000;  // milliseconds
    const KernelHandle thread(::CreateThread(nullptr, 0, reportHere, nullptr, 0, nullptr));
    if (thread) {
        ::WaitForSingleObject(thread.get(), patience);
    }
    reporter = ::GetCurrentThreadId();
    reportAndEnd();
}

void reportAndGoOn() noexcept {
    doSteps();
    nextStep = 0;
    clearFacts();
    report.trace.clear();
    report.facts = {};
    report.entry = {};
    reporter = 0;
}

}  // namespace platform_windows::crash
