// The user's locale as the program's texts need it, from the system's settings for formats.
#pragma once

#include <string>
#include <string_view>

#include "runtime/locale.h"

namespace platform_windows {

runtime::Locale userLocale();

// A date or time picture of the system as a pattern of runtime::Locale: quotes around literal text are taken off, years
// are written with two or four digits. Empty where there is no such pattern (names of days and months, eras, a literal
// letter that would mean something).
std::string patternOfPicture(std::string_view picture);

}  // namespace platform_windows
