#include "platform/linux/messenger/order_names.h"

#include <algorithm>

namespace platform_linux::messenger {

std::string upperCaseName(std::string_view name) {
    std::string result(name);
    for (char& c : result) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return result;
}

bool isOrderFile(std::string_view name) {
    constexpr std::string_view shape = "KRV00000.AUF";
    if (name.size() != shape.size()) {
        return false;
    }
    const std::string upper = upperCaseName(name);
    const std::string_view digits = std::string_view(upper).substr(3, 5);
    return upper.starts_with("KRV") && std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; }) &&
           (upper.ends_with(".AUF") || upper.ends_with(".ERG") || upper.ends_with(".TMP"));
}

}  // namespace platform_linux::messenger
