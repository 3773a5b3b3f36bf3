// DOS code pages.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace platform_linux {

// The character of each byte; 0 for none, as for the byte 0.
using CodePage = std::array<char32_t, 256>;

// The characters of a DOS code page (437, 850, 858, 852, ...), the codes 1 to 31 and 127 as the glyphs that DOS showed
// for them. A code page that the system does not know falls back to 850.
CodePage dosCodePage(int number);

// Whether the system knows a code page of that number that has one byte per character and ASCII in its lower half.
bool isDosCodePage(int number);

// Bytes as text: 0 is a blank, as on the screen of DOS, and a byte without a character is U+FFFD.
std::string textOf(std::string_view bytes, const CodePage& codePage);

// Windows-1252, in which its five unused codes are the control characters of the same number. Nothing for a text with
// other characters.
std::string fromWindows1252(std::string_view bytes);
std::optional<std::string> toWindows1252(std::string_view text);

}  // namespace platform_linux
