// Text made in memory that was there before: what a handler of crashes writes with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace platform::crash {

// Appends to a borrowed room and drops what finds none in it. Allocates nothing, throws nothing.
class FixedText {
public:
    explicit FixedText(std::span<char> room) noexcept : room_(room) {}

    FixedText& operator<<(std::string_view text) noexcept;
    // Decimal, with zeros in front up to so many digits.
    FixedText& number(std::uint64_t number, int digits = 1) noexcept;
    // "0x1f"
    FixedText& address(std::uint64_t address) noexcept;
    // Text of somebody else's: control characters, which could end a line, are dots.
    FixedText& shown(std::string_view text) noexcept;
    // Blanks up to a column of the line, from 0, counted in characters of UTF-8.
    FixedText& column(std::size_t column) noexcept;

    std::string_view view() const noexcept { return {room_.data(), length_}; }
    std::size_t room() const noexcept { return room_.size() - length_ - keptBack_; }
    // Keeps so many bytes of the room for what has to be said in the end.
    void keepBack(std::size_t bytes) noexcept { keptBack_ = bytes; }

private:
    std::span<char> room_;
    std::size_t keptBack_ = 0;
    std::size_t length_ = 0;
};

}  // namespace platform::crash
