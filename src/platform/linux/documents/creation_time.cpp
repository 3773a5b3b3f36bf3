#include "platform/linux/documents/creation_time.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace platform_linux::documents {

std::time_t creationTime() {
    if (const char* value = std::getenv("SOURCE_DATE_EPOCH"); value != nullptr) {
        const std::string_view text = value;
        std::time_t seconds = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
        // The last second of the year 9999: a date has four digits for its year.
        constexpr std::time_t latest = 253'402'300'799;
        if (error == std::errc() && end == text.data() + text.size() && seconds >= 0 && seconds <= latest) {
            return seconds;
        }
    }
    return std::time(nullptr);
}

}  // namespace platform_linux::documents
