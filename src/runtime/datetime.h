// Dates and times of day as the program writes them.
#pragma once

#include <string>

#include "runtime/locale.h"

namespace runtime {

// A moment in the user's local time.
struct DateTime {
    int year = 1970;
    int month = 1;  // 1 to 12
    int day = 1;    // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};

// "21.11.2026 13:45:07" in German: short date, a blank, time of day.
std::string dateTimeText(const DateTime& when, const Locale& locale);
std::string dateText(const DateTime& when, const Locale& locale);
std::string timeText(const DateTime& when, const Locale& locale);

// Seconds since midnight, single precision, with the fraction that the clock gives. Starts again at 0 every day.
float secondsSinceMidnight(const DateTime& when);

}  // namespace runtime
