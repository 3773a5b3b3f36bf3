#include "platform/linux/crash/crash_report.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <climits>
#include <csetjmp>
#include <ctime>

#include "platform/crash/report_text.h"
#include "platform/crash/termination.h"
#include "platform/linux/crash/description.h"
#include "platform/linux/crash/finish_file.h"
#include "platform/linux/crash/last_throw.h"
#include "platform/linux/crash/modules.h"
#include "platform/linux/crash/report_file.h"
#include "platform/linux/crash/second_process.h"
#include "platform/linux/crash/stack_walk.h"
#include "platform/linux/crash/system_facts.h"
#include "platform/linux/desktop.h"
#include "platform/linux/unfinished_file.h"
#include "runtime/program.h"

namespace platform_linux::crash {

namespace {

using platform::crash::ErrorFacts;
using platform::crash::FixedText;
using platform::crash::HostFate;
using platform::crash::Trace;

constexpr std::size_t longestLine = 2048;
constexpr std::size_t mostArguments = 64;

struct Report {
    int signal = 0;
    const siginfo_t* info = nullptr;
    void* context = nullptr;
    bool terminated = false;

    Trace trace;
    ErrorFacts facts;
    std::array<char, longestLine> description{};
    std::array<char, platform::crash::longestEntry> room{};
    std::string_view entry;
    bool written = false;
};

constinit platform::Activity theActivity;
constinit std::span<const char* const> theArguments;
constinit std::array<char, PATH_MAX> logPath{};
constinit bool offering = false;
constinit Report report;
constinit std::atomic<pid_t> reporter = 0;  // thread
constinit std::size_t nextStep = 0;
sigjmp_buf stepEnd;

void findMoment() noexcept {
    using namespace std::chrono;
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const sys_seconds moment{seconds{now.tv_sec}};
    const auto today = floor<days>(moment);
    const year_month_day date{today};
    const hh_mm_ss time{moment - today};
    constexpr long nanosecondsPerMillisecond = 1'000'000;
    ErrorFacts& facts = report.facts;
    facts.year = static_cast<int>(date.year());
    facts.month = static_cast<int>(static_cast<unsigned>(date.month()));
    facts.day = static_cast<int>(static_cast<unsigned>(date.day()));
    facts.hour = static_cast<int>(time.hours().count());
    facts.minute = static_cast<int>(time.minutes().count());
    facts.second = static_cast<int>(time.seconds().count());
    facts.millisecond = static_cast<int>(now.tv_nsec / nanosecondsPerMillisecond);
    facts.process = static_cast<std::uint32_t>(::getpid());
}

void traceCalls() noexcept {
    if (report.signal != 0) {
        walkInterruptedStack(report.context, report.trace);
        return;
    }
    report.trace = lastThrow();
    if (report.trace.size() == 0) {
        walkOwnStack(report.trace);
    }
}

void describe() noexcept {
    FixedText text(report.description);
    if (report.signal != 0) {
        report.facts.number = report.signal;
        describeSignal(text, report.signal, *report.info, report.context);
    } else if (report.terminated) {
        report.facts.number = platform::crash::describeTermination(text);
    } else {
        return;
    }
    report.facts.description = text.view();
}

void letHostGo() noexcept {
    if (theActivity.hostWaits) {
        report.facts.host = HostFate::stillWaiting;
        if (writeFinishFile()) {
            report.facts.host = HostFate::released;
            theActivity.hostWaits = false;
        }
    }
}

void compose() noexcept {
    static std::array<std::string_view, mostArguments> arguments;
    const std::size_t count = std::min(theArguments.size(), mostArguments);
    for (std::size_t i = 0; i < count; ++i) {
        arguments[i] = theArguments[i];
    }
    FixedText text(report.room);
    platform::crash::addEntry(text, report.facts, theActivity, report.trace, moduleAt,
                              std::span(arguments).first(count), ownModules(), systemFacts());
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

void write() noexcept { report.written = logPath.front() != '\0' && appendEntry(logPath.data(), report.entry) == 0; }

// What a run-time error is has been told before. Gives up rather than wait for a reader that does not read.
void tell() noexcept {
    constexpr int patience = 1000;  // milliseconds
    static std::array<char, longestLine + PATH_MAX> room;
    FixedText text(room);
    text << runtime::programName << ": ";
    if (report.signal != 0 || report.terminated) {
        text << "Unerwarteter Fehler: ";
        text.shown(report.facts.description) << (report.written ? "; " : "\n");
    } else if (!report.written) {
        return;
    }
    if (report.written) {
        text << "Bericht in ";
        text.shown(logPath.data()) << "\n";
    }
    pollfd output{STDERR_FILENO, POLLOUT, 0};
    if (::poll(&output, 1, patience) > 0 && (output.revents & POLLOUT) != 0) {
        [[maybe_unused]] const ssize_t told = ::write(STDERR_FILENO, text.view().data(), text.view().size());
    }
}

// A crash of the one that offers is not offered.
void offer() noexcept {
    if (report.written && !offering && desktopNamed()) {
        startSecondProcess();
    }
}

using Step = void (*)() noexcept;
constexpr std::array<Step, 12> steps = {findMoment,       traceCalls, describe,    letHostGo,
                                        removeUnfinished, findSystem, findMachine, compose,
                                        composeLess,      write,      tell,        offer};

void doSteps() noexcept {
    // One that crashes is not begun again: its crash comes back to here.
    [[maybe_unused]] const int crashed = sigsetjmp(stepEnd, 0);
    while (nextStep < steps.size()) {
        steps[nextStep++]();
    }
}

}  // namespace

void prepareReport(std::span<const char* const> arguments, std::string_view logFile, bool offers) noexcept {
    offering = offers;
    theArguments = arguments;
    if (logFile.size() < logPath.size()) {
        std::copy(logFile.begin(), logFile.end(), logPath.begin());
    }
}

bool isOffering() noexcept { return offering; }

platform::Activity& activity() noexcept { return theActivity; }

void takeReport() noexcept {
    const pid_t self = ::gettid();
    pid_t other = 0;
    if (reporter.compare_exchange_strong(other, self)) {
        nextStep = 0;
        return;
    }
    if (other == self) {
        siglongjmp(stepEnd, 1);
    }
    while (true) {
        ::pause();
    }
}

void reportOf(int signal, const siginfo_t& info, void* context) noexcept {
    report.signal = signal;
    report.info = &info;
    report.context = context;
}

void reportOfTermination() noexcept { report.terminated = true; }

void reportOf(std::int64_t number, std::string_view description) noexcept {
    report.facts.number = number;
    report.facts.description = description;
}

void reportAndEnd() noexcept {
    doSteps();
    ::_exit(0);
}

void reportAndGoOn() noexcept {
    doSteps();
    report.trace.clear();
    report.entry = {};
    report.facts = {};
    report.written = false;
    clearFacts();
    reporter = 0;
}

}  // namespace platform_linux::crash
