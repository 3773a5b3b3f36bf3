// Strings and dates as the document information holds them.
#pragma once

#include <ctime>
#include <string>
#include <string_view>

namespace platform_linux::pdf {

// A character's UTF-16BE code units in hexadecimal digits.
void appendUtf16Hex(std::string& text, char32_t character);

// A byte in two hexadecimal digits.
void appendHexByte(std::string& text, unsigned byte);

// Bytes as a literal string without its brackets, such that a reader gets back exactly these bytes.
void appendEscaped(std::string& text, std::string_view bytes);

// UTF-8 as a text string object: a literal for plain ASCII, else UTF-16BE. Bytes that are no UTF-8 become U+FFFD.
std::string textString(std::string_view utf8);

// A moment as a date object, in UTC.
std::string dateString(std::time_t moment);

// The same as XML has it: "2026-11-21T13:45:07Z" (ISO 8601).
std::string dateOfXml(std::time_t moment);

}  // namespace platform_linux::pdf
