#include "platform/linux/local_time.h"

namespace platform_linux {

runtime::DateTime localTimeOf(const timespec& moment) {
    tm local{};
    ::localtime_r(&moment.tv_sec, &local);
    constexpr long nanosecondsPerMillisecond = 1'000'000;
    return {.year = local.tm_year + 1900,
            .month = local.tm_mon + 1,
            .day = local.tm_mday,
            .hour = local.tm_hour,
            .minute = local.tm_min,
            .second = local.tm_sec > 59 ? 59 : local.tm_sec,
            .millisecond = static_cast<int>(moment.tv_nsec / nanosecondsPerMillisecond)};
}

}  // namespace platform_linux
