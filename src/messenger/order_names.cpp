#include "messenger/order_names.h"

#include <algorithm>
#include <cctype>

#include "runtime/text.h"
#include "runtime/whole_number.h"

namespace messenger {

namespace {

constexpr std::string_view prefix = "KRV";
constexpr std::size_t digits = 5;
constexpr std::size_t endingLength = 3;
constexpr std::size_t nameLength = prefix.size() + digits + 1 + endingLength;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLowerCase(char c) { return c >= 'a' && c <= 'z'; }

std::optional<OrderFileKind> kindOf(std::string_view ending) {
    if (ending == "AUF") {
        return OrderFileKind::order;
    }
    if (ending == answerEnding) {
        return OrderFileKind::answer;
    }
    return ending == "TMP" ? std::optional(OrderFileKind::unfinished) : std::nullopt;
}

}  // namespace

std::optional<OrderFileName> orderFileName(std::string_view name) {
    const std::string upper = runtime::upperCase(name);
    if (upper.size() != nameLength || !upper.starts_with(prefix)) {
        return std::nullopt;
    }
    const std::string_view number = std::string_view(upper).substr(prefix.size(), digits);
    const std::string_view ending = std::string_view(upper).substr(nameLength - endingLength);
    const auto kind = kindOf(ending);
    if (!std::ranges::all_of(number, isDigit) || upper[prefix.size() + digits] != '.' || !kind) {
        return std::nullopt;
    }
    return OrderFileName{runtime::wholeNumber<int>(number).value_or(0), *kind};
}

std::string withEnding(std::string_view name, std::string_view ending) {
    const std::size_t stem = name.size() - endingLength;
    const bool lowerCase = std::ranges::any_of(name.substr(stem), isLowerCase);
    std::string result(name.substr(0, stem));
    for (const char c : ending) {
        result += lowerCase ? static_cast<char>(std::tolower(static_cast<unsigned char>(c))) : c;
    }
    return result;
}

}  // namespace messenger
