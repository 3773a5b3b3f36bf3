#include "runtime/text.h"

#include <cstdint>

namespace runtime {

namespace {

struct Decoded {
    char32_t character;
    std::size_t length;
};

// The two-byte sequence at the text's beginning (U+0080 to U+07FF); length 0 for anything else. All letters that
// capitalOf() knows beyond ASCII lie in that range.
Decoded decodeTwoBytes(std::string_view text) {
    if (text.size() < 2) {
        return {0, 0};
    }
    const auto first = static_cast<std::uint8_t>(text[0]);
    const auto second = static_cast<std::uint8_t>(text[1]);
    if (first < 0xC2 || first > 0xDF || (second & 0xC0U) != 0x80) {
        return {0, 0};
    }
    return {static_cast<char32_t>((first & 0x1FU) << 6U | (second & 0x3FU)), 2};
}

void appendTwoBytes(std::string& to, char32_t character) {
    to += static_cast<char>(0xC0U | (character >> 6U));
    to += static_cast<char>(0x80U | (character & 0x3FU));
}

bool between(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }

// Capital letters of Latin-1, Latin Extended-A, Greek and Cyrillic (Unicode, simple case mapping).
char32_t capitalOf(char32_t c) {
    if (between(c, 0xE0, 0xFE) && c != 0xF7) {
        return c - 0x20;
    }
    if (c == 0xFF) {
        return 0x178;
    }
    if (between(c, 0x100, 0x137) && c != 0x131) {
        return c & ~char32_t{1};
    }
    if (between(c, 0x139, 0x148) || between(c, 0x179, 0x17E)) {
        return c % 2 == 0 ? c - 1 : c;
    }
    if (between(c, 0x14A, 0x177)) {
        return c & ~char32_t{1};
    }
    if (between(c, 0x3B1, 0x3C9) && c != 0x3C2) {
        return c - 0x20;
    }
    if (between(c, 0x430, 0x44F)) {
        return c - 0x20;
    }
    if (between(c, 0x450, 0x45F)) {
        return c - 0x50;
    }
    return c;
}

}  // namespace

std::string upperCase(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const char c = text.front();
        const Decoded decoded = decodeTwoBytes(text);
        if (decoded.length != 0) {
            appendTwoBytes(result, capitalOf(decoded.character));
            text.remove_prefix(decoded.length);
            continue;
        }
        result += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        text.remove_prefix(1);
    }
    return result;
}

std::string_view trimRight(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

std::string_view trimBlanks(std::string_view text) {
    text = trimRight(text);
    text.remove_prefix(text.empty() ? 0 : text.find_first_not_of(' '));
    return text;
}

std::string AddBackslash(std::string_view folder) {
    std::string result(trimRight(folder));
    if (!result.ends_with('\\')) {
        result += '\\';
    }
    return result;
}

std::string_view fileNameOf(std::string_view path) {
    const std::size_t separator = path.find_last_of("\\/");
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

void appendUtf8(std::string& text, char32_t character) {
    const auto tail = [&text, character](unsigned shift) {
        text += static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0U | (character >> 6U));
        tail(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0U | (character >> 12U));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | (character >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

std::string_view beginningOf(std::string_view text, std::size_t mostBytes) {
    std::size_t length = text.size() < mostBytes ? text.size() : mostBytes;
    while (length > 0 && length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80) {
        --length;
    }
    return text.substr(0, length);
}

}  // namespace runtime
