// What is done about a crash: one step behind the other, in memory that was there before.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string_view>

#include "platform/activity.h"
#include "platform/crash/symbols.h"

namespace platform_windows::crash {

// In the environment of a second process: it is to offer the newest report that nobody has seen.
inline constexpr const wchar_t* offerVariable = L"KRVWINPR_ERROR_REPORT";

// Where the log is, and whether this process is to offer a report; a crash of such a one is not offered.
void prepareReport(platform::crash::SymbolTable ownRoutines, std::wstring_view logFile, bool offers) noexcept;
bool isOffering() noexcept;

// Where and how the program is. Written before anything crashes.
platform::Activity& activity() noexcept;

// Takes the report for the calling thread, where no other is at one: that one then waits for the end of the process,
// and a thread whose own report has crashed goes on with the next step. Every report begins with it.
void takeReport() noexcept;

// Whether the calling thread is at a report.
bool isReporting() noexcept;

// What it is a report of, one of these: an exception of the system, std::terminate(), a text; of the last two what was
// thrown last is the place where it happened.
void reportOf(const EXCEPTION_POINTERS& exception) noexcept;
void reportOfTermination() noexcept;
void reportOf(std::int64_t number, std::string_view description) noexcept;
// The place is the caller's own, without so many calls.
void reportOfAbort(std::size_t without) noexcept;

// Does it all, and ends the process with exit code 0. Called again, it goes on with the next step.
[[noreturn]] void reportAndEnd() noexcept;

// The same in another thread, where the calling one has no stack left.
[[noreturn]] void reportElsewhereAndEnd() noexcept;

// Does it all, for a process that goes on.
void reportAndGoOn() noexcept;

}  // namespace platform_windows::crash
