// What is done about a crash: one step behind the other, in memory that was there before.
#pragma once

#include <csignal>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/activity.h"

namespace platform_linux::crash {

// Where and how the program is; all are borrowed for as long as it runs. Written before anything crashes. The log's
// path may be empty: then there is no place for one. A process that is there to offer a report offers none of its own.
void prepareReport(std::span<const char* const> arguments, std::string_view logFile, bool offers) noexcept;
bool isOffering() noexcept;

platform::Activity& activity() noexcept;

// Takes the report for the calling thread, where no other is at one: that one then waits for the end of the process,
// and a thread whose own report has crashed goes on with the next step. Every report begins with it.
void takeReport() noexcept;

// What it is a report of, one of these: a signal; std::terminate(); a text. Of the last two what was thrown last is
// the place where it happened.
void reportOf(int signal, const siginfo_t& info, void* context) noexcept;
void reportOfTermination() noexcept;
void reportOf(std::int64_t number, std::string_view description) noexcept;

// Does it all, and ends the process with exit code 0.
[[noreturn]] void reportAndEnd() noexcept;

// Does it all, for a process that goes on.
void reportAndGoOn() noexcept;

}  // namespace platform_linux::crash
