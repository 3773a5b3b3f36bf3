// Text helpers. All text is UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace runtime {

// Upper-case form for comparing names: Latin, Greek and Cyrillic letters that have a single capital of their own; "ß"
// has none and stays. Bytes that are no UTF-8 stay as they are.
std::string upperCase(std::string_view text);

// Without blanks (spaces only) at both ends, or at the right end.
std::string_view trimBlanks(std::string_view text);
std::string_view trimRight(std::string_view text);

// The folder with a separator behind it, ready for a file name: blanks at its end are cut and "\" is added unless it
// ends in one.
std::string AddBackslash(std::string_view folder);

// The last name of a path, behind its last "\" or "/".
std::string_view fileNameOf(std::string_view path);

// Appends a character; a Unicode code point.
void appendUtf8(std::string& text, char32_t character);

// The beginning of a text, of at most so many bytes, without half a character at its end.
std::string_view beginningOf(std::string_view text, std::size_t mostBytes);

}  // namespace runtime
