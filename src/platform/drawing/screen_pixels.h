// Pixels of the screen in memory, drawn on without the system.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "platform/color.h"
#include "platform/drawing/page_area.h"

namespace platform::drawing {

// Of a bitmap of 32 bits a pixel (0xFFRRGGBB), rows from the top. What the system has drawn there is finished. The
// memory is another's.
struct ScreenPixels {
    std::uint32_t* first = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;  // pixels from one row to the next

    std::uint32_t* row(std::int64_t y) const { return first + y * stride; }
};

// From one place to another, parts of pixels included.
struct Reach {
    double start = 0;
    double end = 0;

    double length() const { return end - start; }
    bool operator==(const Reach&) const = default;
};

// The whole pixels of a reach, and how much of the first and of the last one is covered.
class Cover {
public:
    explicit Cover(Reach reach) : reach_(reach) {}
    // Of a bitmap of so many pixels.
    Cover(Reach reach, int size)
        : reach_{std::clamp<double>(reach.start, 0, size), std::clamp<double>(reach.end, 0, size)} {}

    // Also where a number is none.
    bool empty() const { return !(reach_.start < reach_.end); }
    std::int64_t first() const { return static_cast<std::int64_t>(std::floor(reach_.start)); }
    std::int64_t end() const { return static_cast<std::int64_t>(std::ceil(reach_.end)); }
    Span pixels() const { return {first(), end()}; }
    double of(std::int64_t pixel) const {
        const auto start = static_cast<double>(pixel);
        return std::max(0.0, std::min(reach_.end, start + 1) - std::max(reach_.start, start));
    }

private:
    Reach reach_;
};

// The ground and a share of the colour, up to a whole pixel of it.
inline constexpr std::uint32_t wholePixel = 256;
// Of a part up to 1; of an opacity up to 255.
inline std::uint32_t shareOf(double part) { return static_cast<std::uint32_t>(std::lround(part * wholePixel)); }
inline std::uint32_t shareOf(std::uint8_t opacity) { return opacity + (opacity >> 7U); }
inline constexpr std::uint32_t opaque = 0xFF000000;
std::uint32_t mixed(std::uint32_t ground, std::uint32_t color, std::uint32_t share);

// Fills an area as far as it is on the bitmap. Of a pixel that lies within in part, that part is filled; opacity from
// 0 to 1.
void blend(const ScreenPixels& pixels, Reach across, Reach down, Color color, double opacity = 1);

inline std::uint32_t pixelOf(Color color) {
    return opaque | static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
}

}  // namespace platform::drawing
