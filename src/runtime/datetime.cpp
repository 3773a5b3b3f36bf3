#include "runtime/datetime.h"

#include <string_view>

namespace runtime {

namespace {

std::string padded(int value, std::size_t width) {
    std::string digits = std::to_string(value);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

// The text of a run of one pattern letter: its repetitions say the least number of digits.
std::string field(char letter, std::size_t repetitions, const DateTime& when, const Locale& locale) {
    switch (letter) {
        case 'd':
            return padded(when.day, repetitions);
        case 'M':
            return padded(when.month, repetitions);
        case 'y':
            return repetitions > 2 ? padded(when.year, 4) : padded(when.year % 100, 2);
        case 'H':
            return padded(when.hour, repetitions);
        case 'h':
            return padded(when.hour % 12 == 0 ? 12 : when.hour % 12, repetitions);
        case 'm':
            return padded(when.minute, repetitions);
        case 's':
            return padded(when.second, repetitions);
        case 't':
            return when.hour < 12 ? locale.morning : locale.afternoon;
        default:
            return std::string(repetitions, letter);
    }
}

std::string formatted(std::string_view pattern, const DateTime& when, const Locale& locale) {
    std::string result;
    while (!pattern.empty()) {
        std::size_t length = pattern.find_first_not_of(pattern.front());
        length = length == std::string_view::npos ? pattern.size() : length;
        result += field(pattern.front(), length, when, locale);
        pattern.remove_prefix(length);
    }
    return result;
}

}  // namespace

std::string dateText(const DateTime& when, const Locale& locale) { return formatted(locale.shortDate, when, locale); }

std::string timeText(const DateTime& when, const Locale& locale) { return formatted(locale.longTime, when, locale); }

std::string dateTimeText(const DateTime& when, const Locale& locale) {
    return dateText(when, locale) + " " + timeText(when, locale);
}

float secondsSinceMidnight(const DateTime& when) {
    return static_cast<float>((when.hour * 60 + when.minute) * 60 + when.second) +
           static_cast<float>(when.millisecond) / 1000.0F;
}

}  // namespace runtime
