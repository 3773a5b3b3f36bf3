// The user's locale, as far as the program's texts depend on it. Filled by the platform, used by the runtime; nothing
// depends on the process's global C locale.
#pragma once

#include <string>

namespace runtime {

// Date and time patterns use d, dd, M, MM, yy, yyyy, H, HH, h, hh, mm, ss and tt (morning or afternoon mark); every
// other character stands for itself. The defaults are German.
struct Locale {
    std::string language = "de";  // ISO 639-1
    std::string decimalSeparator = ",";
    std::string shortDate = "dd.MM.yyyy";
    std::string longTime = "HH:mm:ss";
    std::string morning;
    std::string afternoon;
    std::string trueText = "Wahr";
    std::string falseText = "Falsch";
};

}  // namespace runtime
