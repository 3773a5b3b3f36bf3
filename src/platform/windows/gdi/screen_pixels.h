// Pixels of the screen in memory, drawn on without the system.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "platform/color.h"

namespace platform_windows::gdi {

// Of a bitmap of 32 bits a pixel (0x00RRGGBB), rows from the top. What the system has drawn there is finished
// (GdiFlush()). The memory is another's.
struct ScreenPixels {
    std::uint32_t* first = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;  // pixels from one row to the next

    std::uint32_t* row(int y) const { return first + static_cast<std::ptrdiff_t>(y) * stride; }
};

// From one place to another, parts of pixels included.
struct Reach {
    double start = 0;
    double end = 0;
};

// Whole pixels, and how much of the first and of the last one is covered.
class Cover {
public:
    // Of a bitmap of so many pixels.
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

// The ground and a share of the colour, up to a whole pixel of it.
inline constexpr std::uint32_t wholePixel = 256;
std::uint32_t mixed(std::uint32_t ground, std::uint32_t color, std::uint32_t share);

// Fills an area as far as it is on the bitmap. Of a pixel that lies within in part, that part is filled; opacity from
// 0 to 1.
void blend(const ScreenPixels& pixels, Reach across, Reach down, platform::Color color, double opacity = 1);

inline std::uint32_t pixelOf(platform::Color color) {
    return static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
}

}  // namespace platform_windows::gdi
