// Whole numbers as the program itself and its users write them.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace runtime {

// The whole text as a decimal number without blanks or grouping; nothing for anything else and beyond the type's range.
template <typename Integer>
std::optional<Integer> wholeNumber(std::string_view text) {
    Integer number{};
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, number);
    return error == std::errc() && end == textEnd ? std::optional(number) : std::nullopt;
}

}  // namespace runtime
