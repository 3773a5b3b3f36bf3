// Conversions at the system's edge: text inside the program is UTF-8, the system's functions take UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace platform_windows {

// What is no valid text becomes U+FFFD. A text of more than 2^31 - 1 units is runtime::Error errOutOfMemory.
std::wstring widen(std::string_view text);
std::string narrow(std::wstring_view text);

// The same for the bytes of a code page, flags as MultiByteToWideChar() takes them. A code page that knows no flags is
// asked without them.
std::wstring decode(std::string_view bytes, unsigned codePage, unsigned long flags);

// Bytes of a code page; "?" for a character that it lacks, never one that merely looks alike.
std::string encode(std::wstring_view text, unsigned codePage);

// Every line end as the pair of CR and LF, as the system's boxes and other programs have it.
std::string withLineEnds(std::string_view text);

}  // namespace platform_windows
