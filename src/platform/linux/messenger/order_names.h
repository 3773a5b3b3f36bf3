// The names that orders and answers have (docs/MESSENGER.md).
#pragma once

#include <string>
#include <string_view>

namespace platform_linux::messenger {

// Letters of ASCII in upper case: no other counts in these names.
std::string upperCaseName(std::string_view name);

// "KRV", five digits, ".AUF", ".ERG" or ".TMP", in any case.
bool isOrderFile(std::string_view name);

inline constexpr const char* holdName = "KRVWINPR.BOT";
inline constexpr const char* completionName = "KRVWINPR.OK";

}  // namespace platform_linux::messenger
