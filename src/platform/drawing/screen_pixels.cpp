#include "platform/drawing/screen_pixels.h"

#include <algorithm>
#include <cmath>

namespace platform::drawing {

// Two channels at a time: 0x00RR00BB and 0x0000GG00.
std::uint32_t mixed(std::uint32_t ground, std::uint32_t color, std::uint32_t share) {
    constexpr std::uint32_t redBlue = 0xFF00FF;
    constexpr std::uint32_t green = 0x00FF00;
    constexpr std::uint32_t half = 0x800080;
    const std::uint32_t rest = wholePixel - share;
    const std::uint32_t outer = ((ground & redBlue) * rest + (color & redBlue) * share + half) >> 8 & redBlue;
    const std::uint32_t inner = ((ground & green) * rest + (color & green) * share + (half << 8 & green)) >> 8 & green;
    return opaque | outer | inner;
}

void blend(const ScreenPixels& pixels, Reach across, Reach down, Color color, double opacity) {
    const Cover columns(across, pixels.width);
    const Cover rows(down, pixels.height);
    if (columns.empty() || rows.empty()) {
        return;
    }
    const std::int64_t first = columns.first();
    const std::int64_t last = columns.end() - 1;
    const std::uint32_t own = pixelOf(color);
    for (std::int64_t y = rows.first(); y < rows.end(); ++y) {
        const double strength = rows.of(y) * opacity;
        std::uint32_t* row = pixels.row(y);
        const auto mix = [&](std::int64_t x, double part) { row[x] = mixed(row[x], own, shareOf(part * strength)); };
        mix(first, columns.of(first));
        if (first < last) {
            mix(last, columns.of(last));
        }
        if (strength >= 1) {
            std::fill(row + std::min(first + 1, last), row + last, own);
        } else {
            for (std::int64_t x = first + 1; x < last; ++x) {
                mix(x, 1);
            }
        }
    }
}

}  // namespace platform::drawing
