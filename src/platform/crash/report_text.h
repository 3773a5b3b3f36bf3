// The text of an error report, the same on every system: one entry of the log "KRVWinPr.ERR".
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/activity.h"
#include "platform/crash/fixed_text.h"
#include "platform/crash/symbols.h"
#include "platform/crash/trace.h"

namespace platform::crash {

// No entry is longer.
inline constexpr std::size_t longestEntry = std::size_t{64} << 10;

// What is loaded where an address lies; an empty name where nothing is.
struct Module {
    std::string_view name;  // of the file, without its folder
    std::uintptr_t base = 0;
    SymbolTable symbols = nullptr;  // null for a library of somebody else
};
using ModuleAt = Module (*)(std::uintptr_t address) noexcept;

// A line of an entry, "System:  Linux 6.1"; one without a value is left out.
struct Fact {
    std::string_view label;
    std::string_view value;
};

// The labels of what is read out of an entry again.
namespace label {
inline constexpr std::string_view error = "Fehler";
inline constexpr std::string_view mode = "Betriebsart";
inline constexpr std::string_view printFile = "Druckdatei";
inline constexpr std::string_view keptAs = "Aufbewahrt als";
inline constexpr std::string_view stretch = "Abschnitt";
inline constexpr std::string_view host = "Host";
}  // namespace label

// What became of a host that waits for KRVWINPR.OK.
enum class HostFate { notWaiting, released, stillWaiting };
std::string_view fateText(HostFate host) noexcept;

struct ErrorFacts {
    // The moment, in UTC, and the process, which make the entry's mark.
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
    std::uint32_t process = 0;

    std::int64_t number = 0;       // of the run-time error, signal or structured exception
    std::string_view description;  // "Zugriffsverletzung (SIGSEGV), Adresse 0x0"
    HostFate host = HostFate::notWaiting;
};

// "Fehlerbericht 20261122-051233123-4711", as in the lines that begin and end an entry.
void addMark(FixedText& text, const ErrorFacts& error) noexcept;

// The whole entry. Of the arguments, as the program was started with them, one string for each; system is everything
// that the adapter knows, in its order; modules are those of the program's own that are loaded, the program first.
void addEntry(FixedText& text, const ErrorFacts& error, const Activity& activity, const Trace& trace, ModuleAt moduleAt,
              std::span<const std::string_view> arguments, std::span<const Module> modules,
              std::span<const Fact> system) noexcept;

}  // namespace platform::crash
