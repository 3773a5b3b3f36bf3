#include "platform/windows/gdi/screen_pixels.h"

#include <algorithm>
#include <cmath>

namespace platform_windows::gdi {

namespace {

constexpr int whole = 256;

// Whole pixels, and how much of the first and of the last one is covered.
class Cover {
public:
    Cover(Reach reach, int size)
        : reach_{std::clamp<double>(reach.start, 0, size), std::clamp<double>(reach.end, 0, size)} {}

    // Also where a number is none.
    bool empty() const { return !(reach_.start < reach_.end); }
    int first() const { return static_cast<int>(std::floor(reach_.start)); }
    int end() const { return static_cast<int>(std::ceil(reach_.end)); }
    double of(int pixel) const {
        return std::max(0.0, std::min<double>(reach_.end, pixel + 1) - std::max<double>(reach_.start, pixel));
    }

private:
    Reach reach_;
};

// Two channels at a time: 0x00RR00BB and 0x0000GG00.
std::uint32_t mixed(std::uint32_t ground, std::uint32_t color, std::uint32_t share) {
    constexpr std::uint32_t redBlue = 0xFF00FF;
    constexpr std::uint32_t green = 0x00FF00;
    constexpr std::uint32_t half = 0x800080;
    const std::uint32_t rest = whole - share;
    const std::uint32_t outer = ((ground & redBlue) * rest + (color & redBlue) * share + half) >> 8 & redBlue;
    const std::uint32_t inner = ((ground & green) * rest + (color & green) * share + (half << 8 & green)) >> 8 & green;
    return outer | inner;
}

}  // namespace

void blend(const ScreenPixels& pixels, Reach across, Reach down, platform::Color color, double opacity) {
    const Cover columns(across, pixels.width);
    const Cover rows(down, pixels.height);
    if (columns.empty() || rows.empty()) {
        return;
    }
    const int first = columns.first();
    const int last = columns.end() - 1;
    const std::uint32_t own = pixelOf(color);
    for (int y = rows.first(); y < rows.end(); ++y) {
        const double strength = rows.of(y) * opacity * whole;
        std::uint32_t* row = pixels.row(y);
        const auto mix = [&](int x, double part) {
            row[x] = mixed(row[x], own, static_cast<std::uint32_t>(std::lround(part * strength)));
        };
        mix(first, columns.of(first));
        if (first < last) {
            mix(last, columns.of(last));
        }
        if (strength >= whole) {
            std::fill(row + std::min(first + 1, last), row + last, own);
        } else {
            for (int x = first + 1; x < last; ++x) {
                mix(x, 1);
            }
        }
    }
}

}  // namespace platform_windows::gdi
