// Pixels of the screen in memory, drawn on without the system.
#pragma once

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

// Fills an area as far as it is on the bitmap. Of a pixel that lies within in part, that part is filled; opacity from
// 0 to 1.
void blend(const ScreenPixels& pixels, Reach across, Reach down, platform::Color color, double opacity = 1);

inline std::uint32_t pixelOf(platform::Color color) {
    return static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
}

}  // namespace platform_windows::gdi
