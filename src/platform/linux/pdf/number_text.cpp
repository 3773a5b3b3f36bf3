#include "platform/linux/pdf/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace platform_linux::pdf {

void appendInteger(std::string& text, std::int64_t value) {
    std::array<char, 24> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    text.append(digits.data(), end);
}

void appendReal(std::string& text, double value, int decimals) {
    std::array<char, 40> buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value), std::chars_format::fixed, decimals)
            .ptr;
    std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    if (digits.find('.') != std::string_view::npos) {
        digits = digits.substr(0, digits.find_last_not_of('0') + 1);
        if (digits.back() == '.') {
            digits.remove_suffix(1);
        }
    }
    if (digits.size() > 1 && digits.front() == '0') {
        digits.remove_prefix(1);
    }
    if (value < 0 && digits != "0") {
        text += '-';
    }
    text += digits;
}

}  // namespace platform_linux::pdf
