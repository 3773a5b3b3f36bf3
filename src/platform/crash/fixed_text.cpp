#include "platform/crash/fixed_text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace platform::crash {

namespace {

constexpr std::size_t mostDigits = 20;

bool beginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

}  // namespace

FixedText& FixedText::operator<<(std::string_view text) noexcept {
    const std::size_t count = std::min(text.size(), room());
    std::copy_n(text.begin(), count, room_.begin() + static_cast<std::ptrdiff_t>(length_));
    length_ += count;
    return *this;
}

FixedText& FixedText::number(std::uint64_t number, int digits) noexcept {
    std::array<char, mostDigits> text{};
    const char* end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    for (auto written = static_cast<int>(end - text.data()); written < digits; ++written) {
        *this << "0";
    }
    return *this << std::string_view(text.data(), end);
}

FixedText& FixedText::address(std::uint64_t address) noexcept {
    constexpr int hexadecimal = 16;
    std::array<char, mostDigits> text{};
    const char* end = std::to_chars(text.data(), text.data() + text.size(), address, hexadecimal).ptr;
    return *this << "0x" << std::string_view(text.data(), end);
}

FixedText& FixedText::shown(std::string_view text) noexcept {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char deleteCharacter = 0x7F;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        *this << (code < firstPrintable || code == deleteCharacter ? std::string_view(".")
                                                                   : std::string_view(&character, 1));
    }
    return *this;
}

FixedText& FixedText::column(std::size_t column) noexcept {
    const std::string_view whole = view();
    const std::size_t lineEnd = whole.rfind('\n');
    const std::string_view line = lineEnd == std::string_view::npos ? whole : whole.substr(lineEnd + 1);
    for (auto length = static_cast<std::size_t>(std::ranges::count_if(line, beginsCharacter)); length < column;
         ++length) {
        *this << " ";
    }
    return *this;
}

}  // namespace platform::crash
