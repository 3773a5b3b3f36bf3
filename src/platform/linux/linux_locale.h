// The user's locale as the program's texts need it, from the locale names that the environment states.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "runtime/locale.h"

namespace platform_linux {

// Names as "de_CH.UTF-8", one for each category; empty where none is stated, which "C" and "POSIX" do not do either.
struct LocaleNames {
    std::string numbers;     // LC_NUMERIC
    std::string times;       // LC_TIME
    std::string messages;    // LC_MESSAGES
    std::string characters;  // LC_CTYPE
};

// Reads the names from the environment: LC_ALL, else the category's own variable, else LANG. The function returns a
// variable's value, a null pointer for one that is not set.
LocaleNames localeNames(const std::function<const char*(const char*)>& variable);

// Built in are German and the English of the United States and Great Britain; for others the system is asked, and what
// it cannot say follows international custom. No name stated means German, the language of the program and its users.
runtime::Locale localeOf(const LocaleNames& names);

// A format of strftime() as a pattern of runtime::Locale, years written whole; empty where there is no such pattern.
std::string patternOfFormat(std::string_view format);

// Number of the code page that DOS used where this locale is at home; 850 for none.
int dosCodePageOf(std::string_view localeName);

}  // namespace platform_linux
