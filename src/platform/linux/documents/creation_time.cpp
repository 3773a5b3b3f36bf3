#include "platform/linux/documents/creation_time.h"

#include <cstdlib>

#include "runtime/whole_number.h"

namespace platform_linux::documents {

std::time_t creationTime() {
    if (const char* value = std::getenv("SOURCE_DATE_EPOCH"); value != nullptr) {
        // The last second of the year 9999: a date has four digits for its year.
        constexpr std::time_t latest = 253'402'300'799;
        const auto seconds = runtime::wholeNumber<std::time_t>(value);
        if (seconds && *seconds >= 0 && *seconds <= latest) {
            return *seconds;
        }
    }
    return std::time(nullptr);
}

}  // namespace platform_linux::documents
