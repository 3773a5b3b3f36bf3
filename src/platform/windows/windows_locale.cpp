#include "platform/windows/windows_locale.h"

#include <windows.h>

#include <array>

#include "platform/windows/wide_text.h"

namespace platform_windows {

namespace {

constexpr std::string_view patternLetters = "dMyHhmst";

std::string userSetting(LCTYPE type) {
    std::array<wchar_t, 256> text{};
    const int length = ::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text.data(), static_cast<int>(text.size()));
    return length > 1 ? narrow(std::wstring_view(text.data(), static_cast<std::size_t>(length) - 1)) : std::string();
}

// A run of one picture letter; empty where there is no such part.
std::string partOf(char letter, std::size_t repetitions) {
    constexpr std::size_t fullYear = 4;
    switch (letter) {
        case 'y':
            return repetitions > 2 ? std::string(fullYear, letter) : "yy";
        case 't':
            return "tt";
        default:
            return repetitions > 2 ? std::string() : std::string(repetitions, letter);
    }
}

std::string patternOr(std::string_view picture, std::string_view substitute) {
    const std::string pattern = patternOfPicture(picture);
    return pattern.empty() ? std::string(substitute) : pattern;
}

}  // namespace

std::string patternOfPicture(std::string_view picture) {
    constexpr std::string_view eraLetters = "gG";
    std::string pattern;
    bool literal = false;
    while (!picture.empty()) {
        const char letter = picture.front();
        if (letter == '\'') {
            const bool quotedQuote = literal && picture.substr(1).starts_with('\'');
            if (quotedQuote) {
                pattern += letter;
            } else {
                literal = !literal;
            }
            picture.remove_prefix(quotedQuote ? 2 : 1);
            continue;
        }
        const bool meaning = patternLetters.find(letter) != std::string_view::npos;
        if (!meaning && (literal || eraLetters.find(letter) == std::string_view::npos)) {
            pattern += letter;
            picture.remove_prefix(1);
            continue;
        }
        std::size_t length = picture.find_first_not_of(letter);
        length = length == std::string_view::npos ? picture.size() : length;
        const std::string part = literal || !meaning ? std::string() : partOf(letter, length);
        if (part.empty()) {
            return {};
        }
        pattern += part;
        picture.remove_prefix(length);
    }
    return pattern;
}

runtime::Locale userLocale() {
    runtime::Locale locale;
    locale.language = userSetting(LOCALE_SISO639LANGNAME);
    const std::string separator = userSetting(LOCALE_SDECIMAL);
    locale.decimalSeparator = separator.empty() ? locale.decimalSeparator : separator;
    locale.shortDate = patternOr(userSetting(LOCALE_SSHORTDATE), "yyyy-MM-dd");
    locale.longTime = patternOr(userSetting(LOCALE_STIMEFORMAT), "HH:mm:ss");
    locale.morning = userSetting(LOCALE_S1159);
    locale.afternoon = userSetting(LOCALE_S2359);
    if (locale.language != "de") {
        locale.trueText = "True";
        locale.falseText = "False";
    }
    return locale;
}

}  // namespace platform_windows
