#include "runtime/utf8.h"

#include <array>
#include <cstddef>

#include "runtime/text.h"

namespace runtime {

namespace {

bool isControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

void appendEscaped(std::string& text, char32_t code) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text.append("\\x").append(1, digits[code >> 4]).append(1, digits[code & 0xF]);
}

}  // namespace

std::optional<char32_t> takeCharacter(std::string_view& text) {
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char lead = byteAt(0);
    std::size_t length = 0;
    if (lead < 0x80) {
        length = 1;
    } else if (lead >= 0xC2 && lead < 0xE0) {
        length = 2;
    } else if (lead >= 0xE0 && lead < 0xF0) {
        length = 3;
    } else if (lead >= 0xF0 && lead < 0xF5) {
        length = 4;
    }
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    bool valid = length > 0 && length <= text.size();
    for (std::size_t index = 1; valid && index < length; ++index) {
        valid = (byteAt(index) & 0xC0) == 0x80;
        character = (character << 6) | (byteAt(index) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    valid =
        valid && character >= smallest[length] && character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
    text.remove_prefix(valid ? length : 1);
    return valid ? std::optional(character) : std::nullopt;
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        if (!takeCharacter(text)) {
            return false;
        }
    }
    return true;
}

std::string mended(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        appendUtf8(result, takeCharacter(text).value_or(replacementCharacter));
    }
    return result;
}

std::string shown(std::string_view name) {
    std::string result;
    while (!name.empty()) {
        const auto byte = static_cast<unsigned char>(name.front());
        const std::optional<char32_t> character = takeCharacter(name);
        if (!character || isControl(*character)) {
            appendEscaped(result, character.value_or(byte));
        } else {
            appendUtf8(result, *character);
        }
    }
    return result;
}

}  // namespace runtime
