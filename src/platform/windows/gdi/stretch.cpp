#include "platform/windows/gdi/stretch.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace platform_windows::gdi {

Stretch visibleStretch(const Stretch& whole, platform::drawing::Span sheet) {
    constexpr std::int64_t longest = 0x7FFF;
    if (std::abs(std::int64_t{whole.length}) <= longest) {
        return whole;
    }
    const double pixel = static_cast<double>(whole.length) / whole.pixels;
    const auto pixelAt = [&](std::int64_t place) { return static_cast<double>(place - whole.place) / pixel; };
    const double start = pixelAt(pixel > 0 ? sheet.start : sheet.end);
    const double end = pixelAt(pixel > 0 ? sheet.end : sheet.start);
    const auto inside = [&](double at) { return static_cast<int>(std::clamp<double>(at, 0, whole.pixels)); };
    Stretch visible;
    visible.first = inside(std::floor(start));
    visible.pixels = inside(std::ceil(end)) - visible.first;
    const auto placeOf = [&](int at) { return std::llround(whole.place + at * pixel); };
    visible.place = static_cast<int>(placeOf(visible.first));
    visible.length = static_cast<int>(placeOf(visible.first + visible.pixels) - placeOf(visible.first));
    return visible;
}

}  // namespace platform_windows::gdi
