// Text from outside, which may be no text at all.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace runtime {

inline constexpr char32_t replacementCharacter = 0xFFFD;

// Takes one character off the front of a UTF-8 text that is not empty; nothing for a byte that is no part of one.
std::optional<char32_t> takeCharacter(std::string_view& text);

bool isUtf8(std::string_view text);

// Valid UTF-8: every byte that is no part of a character becomes U+FFFD.
std::string mended(std::string_view text);

// A name as logs and messages show it, whatever somebody put into it: control characters and bytes that are no part of
// a character as "\x1B".
std::string shown(std::string_view name);

}  // namespace runtime
