#include "platform/linux/pdf/text_string.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "runtime/byte_set.h"
#include "runtime/utf8.h"

namespace platform_linux::pdf {

namespace {

// What a literal string cannot hold as it is.
using Escaped = runtime::ByteSet<'\\', '(', ')', '\r', '\n'>;

// What stands behind the backslash for it.
char escapeOf(char byte) { return byte == '\r' ? 'r' : byte == '\n' ? 'n' : byte; }

void appendUnit(std::string& text, char32_t unit) {
    appendHexByte(text, unit >> 8);
    appendHexByte(text, unit & 0xFF);
}

void appendPadded(std::string& text, std::int64_t value, std::size_t width) {
    const std::string digits = std::to_string(value);
    text.append(width - std::min(width, digits.size()), '0').append(digits);
}

// In UTC, with what stands between the parts of the date, before the time, and between its parts.
std::string dateAndTime(std::time_t moment, std::string_view inDate, std::string_view between,
                        std::string_view inTime) {
    using namespace std::chrono;
    const sys_seconds time{seconds{moment}};
    const auto day = floor<days>(time);
    const year_month_day date{day};
    const hh_mm_ss clock{time - day};
    std::string text;
    appendPadded(text, static_cast<int>(date.year()), 4);
    appendPadded(text += inDate, static_cast<unsigned>(date.month()), 2);
    appendPadded(text += inDate, static_cast<unsigned>(date.day()), 2);
    appendPadded(text += between, clock.hours().count(), 2);
    appendPadded(text += inTime, clock.minutes().count(), 2);
    appendPadded(text += inTime, clock.seconds().count(), 2);
    return text += 'Z';
}

}  // namespace

void appendHexByte(std::string& text, unsigned byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += digits[byte >> 4];
    text += digits[byte & 0xF];
}

void appendUtf16Hex(std::string& text, char32_t character) {
    if (character > 0xFFFF) {
        appendUnit(text, 0xD800 + ((character - 0x10000) >> 10));
        appendUnit(text, 0xDC00 + ((character - 0x10000) & 0x3FF));
    } else {
        appendUnit(text, character);
    }
}

void appendEscaped(std::string& text, std::string_view bytes) {
    std::size_t plain = 0;
    for (std::size_t at = Escaped::find(bytes); at < bytes.size(); at = Escaped::find(bytes, plain)) {
        text.append(bytes, plain, at - plain).append(1, '\\').append(1, escapeOf(bytes[at]));
        plain = at + 1;
    }
    text.append(bytes, plain);
}

std::string textString(std::string_view utf8) {
    std::string text;
    if (std::all_of(utf8.begin(), utf8.end(), [](char byte) { return byte >= ' ' && byte <= '~'; })) {
        text += '(';
        appendEscaped(text, utf8);
        return text += ')';
    }
    text += "<FEFF";
    while (!utf8.empty()) {
        appendUtf16Hex(text, runtime::takeCharacter(utf8).value_or(runtime::replacementCharacter));
    }
    return text += '>';
}

std::string dateString(std::time_t moment) { return "(D:" + dateAndTime(moment, {}, {}, {}) + ")"; }

std::string dateOfXml(std::time_t moment) { return dateAndTime(moment, "-", "T", ":"); }

}  // namespace platform_linux::pdf
