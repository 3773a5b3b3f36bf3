#include "platform/linux/linux_locale.h"

#include <langinfo.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <optional>

namespace platform_linux {

namespace {

constexpr std::string_view isoDate = "yyyy-MM-dd";
constexpr std::string_view hours24 = "HH:mm:ss";

// "sr_RS.UTF-8@latin": language, territory, modifier.
struct NameParts {
    std::string_view language;
    std::string_view territory;
    std::string_view modifier;
};

NameParts partsOf(std::string_view name) {
    NameParts parts;
    if (const std::size_t at = name.find('@'); at != std::string_view::npos) {
        parts.modifier = name.substr(at + 1);
        name = name.substr(0, at);
    }
    name = name.substr(0, name.find('.'));
    if (const std::size_t underline = name.find('_'); underline != std::string_view::npos) {
        parts.territory = name.substr(underline + 1);
        name = name.substr(0, underline);
    }
    parts.language = name.empty() ? std::string_view("de") : name;
    return parts;
}

bool isGerman(std::string_view name) { return partsOf(name).language == "de"; }

template <std::size_t size>
bool isOneOf(std::string_view text, const std::array<std::string_view, size>& list) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

// A locale of the system, not the process's own one.
class SystemLocale {
public:
    explicit SystemLocale(const std::string& name) : handle_(::newlocale(LC_ALL_MASK, name.c_str(), nullptr)) {}
    SystemLocale(const SystemLocale&) = delete;
    SystemLocale& operator=(const SystemLocale&) = delete;
    ~SystemLocale() {
        if (handle_ != nullptr) {
            ::freelocale(handle_);
        }
    }
    explicit operator bool() const { return handle_ != nullptr; }

    // Nothing where the text is in a character set other than UTF-8.
    std::optional<std::string> text(nl_item item) const {
        const std::string result = ::nl_langinfo_l(item, handle_);
        const bool ascii =
            std::all_of(result.begin(), result.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
        const bool utf8 = std::string_view(::nl_langinfo_l(CODESET, handle_)) == "UTF-8";
        return ascii || utf8 ? std::optional<std::string>(result) : std::nullopt;
    }

private:
    locale_t handle_;
};

// Conversions of strftime() that our patterns can express. Years are written whole.
struct Conversion {
    char letter;
    std::string_view pattern;
};
constexpr std::array conversions = {
    Conversion{'d', "dd"},          Conversion{'e', "d"},     Conversion{'m', "MM"},         Conversion{'y', "yyyy"},
    Conversion{'Y', "yyyy"},        Conversion{'F', isoDate}, Conversion{'D', "MM/dd/yyyy"}, Conversion{'H', "HH"},
    Conversion{'k', "H"},           Conversion{'I', "hh"},    Conversion{'l', "h"},          Conversion{'M', "mm"},
    Conversion{'S', "ss"},          Conversion{'p', "tt"},    Conversion{'P', "tt"},         Conversion{'T', hours24},
    Conversion{'r', "hh:mm:ss tt"},
};

// Empty for a conversion that is not among them.
std::string_view patternOfConversion(char letter) {
    const auto* found = std::find_if(conversions.begin(), conversions.end(),
                                     [letter](const Conversion& entry) { return entry.letter == letter; });
    return found != conversions.end() ? found->pattern : std::string_view{};
}

// Where numbers are written with a decimal point although the system does not say so.
bool hasDecimalPoint(const NameParts& name) {
    constexpr std::array<std::string_view, 8> languages = {"en", "zh", "ja", "ko", "he", "th", "hi", "ga"};
    constexpr std::array<std::string_view, 8> spanish = {"MX", "US", "GT", "HN", "NI", "PA", "PE", "SV"};
    return isOneOf(name.language, languages) || (name.language == "es" && isOneOf(name.territory, spanish)) ||
           (name.language == "it" && name.territory == "CH");
}

std::string decimalSeparatorOf(const std::string& name) {
    const NameParts parts = partsOf(name);
    if (parts.language == "de") {
        return parts.territory == "CH" || parts.territory == "LI" ? "." : ",";
    }
    if (const SystemLocale system(name); system) {
        if (const auto separator = system.text(RADIXCHAR); separator && !separator->empty()) {
            return *separator;
        }
    }
    return hasDecimalPoint(parts) ? "." : ",";
}

void setTimes(runtime::Locale& locale, const std::string& name) {
    const NameParts parts = partsOf(name);
    if (parts.language == "de") {
        return;
    }
    locale.shortDate = isoDate;
    locale.longTime = hours24;
    locale.morning = "AM";
    locale.afternoon = "PM";
    if (parts.language == "en" && parts.territory == "US") {
        locale.shortDate = "M/d/yyyy";
        locale.longTime = "h:mm:ss tt";
        return;
    }
    if (parts.language == "en" && parts.territory == "GB") {
        locale.shortDate = "dd/MM/yyyy";
        return;
    }
    const SystemLocale system(name);
    if (!system) {
        return;
    }
    locale.morning = system.text(AM_STR).value_or("");
    locale.afternoon = system.text(PM_STR).value_or("");
    if (const auto format = system.text(D_FMT)) {
        const std::string pattern = patternOfFormat(*format);
        locale.shortDate = pattern.empty() ? std::string(isoDate) : pattern;
    }
    if (const auto format = system.text(T_FMT)) {
        const std::string pattern = patternOfFormat(*format);
        // Twelve hours without a mark would say nothing of the half of the day.
        const bool twelveHours = pattern.find('h') != std::string::npos;
        const bool marked = pattern.find("tt") != std::string::npos && !locale.morning.empty();
        locale.longTime = pattern.empty() || (twelveHours && !marked) ? std::string(hours24) : pattern;
    }
}

struct LanguageCodePage {
    std::string_view language;
    int codePage;
};

// What DOS came with in the language's countries (COUNTRY.SYS), as Windows has kept it for its OEM code page. All of
// western Europe and Latin America is 850; the Nordic countries and Portugal, too, changed to it from 865, 861 and 860.
// The languages of eastern Asia had code pages of two bytes, in which no print file of a host is written: 437.
constexpr std::array languageCodePages = {
    LanguageCodePage{"ar", 864}, LanguageCodePage{"az", 857}, LanguageCodePage{"be", 866}, LanguageCodePage{"bg", 866},
    LanguageCodePage{"bs", 852}, LanguageCodePage{"cs", 852}, LanguageCodePage{"el", 737}, LanguageCodePage{"et", 775},
    LanguageCodePage{"he", 862}, LanguageCodePage{"hr", 852}, LanguageCodePage{"hu", 852}, LanguageCodePage{"ja", 437},
    LanguageCodePage{"ko", 437}, LanguageCodePage{"lt", 775}, LanguageCodePage{"lv", 775}, LanguageCodePage{"mk", 866},
    LanguageCodePage{"pl", 852}, LanguageCodePage{"ro", 852}, LanguageCodePage{"ru", 866}, LanguageCodePage{"sk", 852},
    LanguageCodePage{"sl", 852}, LanguageCodePage{"sq", 852}, LanguageCodePage{"sr", 855}, LanguageCodePage{"th", 874},
    LanguageCodePage{"tr", 857}, LanguageCodePage{"uk", 866}, LanguageCodePage{"zh", 437},
};

}  // namespace

std::string patternOfFormat(std::string_view format) {
    constexpr std::string_view patternLetters = "dMyHhmst";
    std::string pattern;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            if (patternLetters.find(format[i]) != std::string_view::npos) {
                return {};
            }
            pattern += format[i];
            continue;
        }
        const bool withoutZero = format.substr(i + 1).starts_with('-');
        i += withoutZero ? 2 : 1;
        const std::string_view part = i < format.size() ? patternOfConversion(format[i]) : std::string_view{};
        if (part.empty()) {
            return {};
        }
        pattern += withoutZero && part.size() == 2 ? part.substr(1) : part;
    }
    return pattern;
}

LocaleNames localeNames(const std::function<const char*(const char*)>& variable) {
    const auto stated = [&variable](const char* category) {
        for (const char* name : {"LC_ALL", category, "LANG"}) {
            const char* value = variable(name);
            if (value != nullptr && *value != '\0') {
                const std::string_view base = std::string_view(value).substr(0, std::string_view(value).find('.'));
                return base == "C" || base == "POSIX" ? std::string() : std::string(value);
            }
        }
        return std::string();
    };
    return {stated("LC_NUMERIC"), stated("LC_TIME"), stated("LC_MESSAGES"), stated("LC_CTYPE")};
}

runtime::Locale localeOf(const LocaleNames& names) {
    runtime::Locale locale;
    locale.language = partsOf(names.messages).language;
    locale.decimalSeparator = decimalSeparatorOf(names.numbers);
    setTimes(locale, names.times);
    if (!isGerman(names.messages)) {
        locale.trueText = "True";
        locale.falseText = "False";
    }
    return locale;
}

int dosCodePageOf(std::string_view localeName) {
    constexpr int western = 850;
    constexpr int unitedStates = 437;
    const NameParts name = partsOf(localeName);
    if (name.language == "en" && name.territory == "US") {
        return unitedStates;
    }
    if (name.modifier == "latin") {
        return 852;
    }
    const auto* found =
        std::find_if(languageCodePages.begin(), languageCodePages.end(),
                     [&name](const LanguageCodePage& entry) { return entry.language == name.language; });
    return found != languageCodePages.end() ? found->codePage : western;
}

}  // namespace platform_linux
