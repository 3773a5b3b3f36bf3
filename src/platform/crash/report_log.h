// The log of error reports, "KRVWinPr.ERR": entries behind each other, the newest last, between marked lines.
#pragma once

#include <cstddef>
#include <string_view>

namespace platform::crash {

inline constexpr std::string_view logFileName = "KRVWinPr.ERR";
// All entries together.
inline constexpr std::size_t longestLog = std::size_t{1} << 20;

// An entry as it stands in the log, from its first to its last marked line; the mark is what stands between the signs
// of equality, "Fehlerbericht 20261122-051233123-4711".
struct Entry {
    std::string_view text;
    std::string_view mark;
};

// The first whole entry of the text; empty where there is none. What a crash or a full disk has left half-written, and
// what somebody has put in, is passed over.
Entry nextEntry(std::string_view log) noexcept;

// What of the log stays where so many bytes are to be added: all of it, or the youngest whole entries for which there
// is room.
std::string_view keptPart(std::string_view log, std::size_t toAdd) noexcept;

}  // namespace platform::crash
