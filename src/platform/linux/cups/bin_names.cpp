#include "platform/linux/cups/bin_names.h"

#include <algorithm>
#include <charconv>

namespace platform_linux::cups {

namespace {

struct Choice {
    std::string keyword;
    std::string text;
};

// Bytes that are no UTF-8 are taken as ISO 8859-1, the usual encoding of such files.
std::string toUtf8(const std::string& bytes) {
    bool valid = true;
    for (std::size_t i = 0; i < bytes.size() && valid; ++i) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        std::size_t more = lead < 0x80 ? 0 : lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
        valid = lead < 0x80 || (lead >= 0xC2 && lead <= 0xF4);
        for (; valid && more > 0; --more) {
            valid = ++i < bytes.size() && (static_cast<unsigned char>(bytes[i]) & 0xC0) == 0x80;
        }
    }
    if (valid) {
        return bytes;
    }
    std::string result;
    for (const char byte : bytes) {
        const unsigned code = static_cast<unsigned char>(byte);
        if (code < 0x80) {
            result += byte;
        } else {
            result += static_cast<char>(0xC0 | (code >> 6U));
            result += static_cast<char>(0x80 | (code & 0x3FU));
        }
    }
    return result;
}

// Translation strings may hold bytes as hexadecimal digits in angle brackets.
std::string decode(std::string_view text) {
    std::string result;
    bool inHex = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (!inHex && c == '<' && text.find('>', i) != std::string_view::npos) {
            inHex = true;
        } else if (inHex && c == '>') {
            inHex = false;
        } else if (inHex) {
            unsigned value = 0;
            const auto [end, error] =
                std::from_chars(text.data() + i, text.data() + std::min(i + 2, text.size()), value, 16);
            if (error == std::errc() && end == text.data() + i + 2) {
                result += static_cast<char>(value);
                ++i;
            }
        } else {
            result += c;
        }
    }
    while (!result.empty() && result.back() == ' ') {
        result.pop_back();
    }
    return toUtf8(result);
}

// The choice of a line "*InputSlot Tray1/Fach 1: ..." for the keyword "InputSlot"; its keyword is empty for any other.
Choice choiceOf(std::string_view line, std::string_view mainKeyword) {
    if (!line.starts_with('*') || line.substr(1, mainKeyword.size()) != mainKeyword) {
        return {};
    }
    std::string_view rest = line.substr(1 + mainKeyword.size());
    const std::size_t start = rest.find_first_not_of(" \t");
    const std::size_t colon = rest.find(':');
    if (start == 0 || start == std::string_view::npos || colon == std::string_view::npos || colon <= start) {
        return {};
    }
    rest = rest.substr(start, colon - start);
    const std::size_t slash = rest.find('/');
    Choice choice{std::string(rest.substr(0, slash)), {}};
    choice.text = slash == std::string_view::npos ? choice.keyword : decode(rest.substr(slash + 1));
    return choice;
}

}  // namespace

std::vector<std::string> binNames(std::string_view ppd, std::string_view language) {
    if (!ppd.starts_with("*PPD-Adobe")) {
        return {};
    }
    std::vector<Choice> choices;
    std::vector<Choice> translations;
    const std::string translated = std::string(language) + ".InputSlot";
    while (!ppd.empty()) {
        const std::size_t end = ppd.find_first_of("\r\n");
        const std::string_view line = ppd.substr(0, end);
        ppd.remove_prefix(end == std::string_view::npos ? ppd.size() : end + 1);
        if (Choice choice = choiceOf(line, "InputSlot"); !choice.keyword.empty()) {
            choices.push_back(std::move(choice));
        } else if (Choice translation = choiceOf(line, translated); !translation.keyword.empty()) {
            translations.push_back(std::move(translation));
        }
    }
    std::vector<std::string> result;
    for (const Choice& choice : choices) {
        const auto found = std::find_if(translations.begin(), translations.end(),
                                        [&choice](const Choice& t) { return t.keyword == choice.keyword; });
        const std::string& text = found != translations.end() ? found->text : choice.text;
        result.push_back(text.empty() ? choice.keyword : text);
    }
    return result;
}

}  // namespace platform_linux::cups
