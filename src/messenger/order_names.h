// The names of the files between KRVWINPR.COM and the messenger (docs/MESSENGER.md).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace messenger {

enum class OrderFileKind { unfinished, order, answer };

struct OrderFileName {
    int number = 0;  // 0 to 99,999
    OrderFileKind kind = OrderFileKind::order;
};

// "KRV00012.AUF" in any case; nothing for any other name.
std::optional<OrderFileName> orderFileName(std::string_view name);

// The name with another ending, in capitals or not as the name's own.
std::string withEnding(std::string_view name, std::string_view ending);

inline constexpr std::string_view answerEnding = "ERG";
// Where an order is put aside: the first of these that is free.
inline constexpr std::string_view asideEnding = "ABG";
inline constexpr std::string_view furtherAsideEnding = "AB";  // and a digit from 1 to 9

}  // namespace messenger
