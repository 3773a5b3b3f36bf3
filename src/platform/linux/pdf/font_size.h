// A font at one size, as page contents use it.
#pragma once

#include <array>
#include <cstdint>

#include "platform/drawing/page_area.h"

namespace platform_linux::pdf {

// Lengths are device pixels.
struct FontSize {
    int resource = 0;     // number of the font among the document's fonts
    std::int64_t em = 0;  // height of the em square
    // Pixels of the direction per pixel down: 1 but for oblong pixels.
    double along = 1;
    double across = 1;
    platform::drawing::Turn turn;
    // What each byte's advance has more than the font's own widths give it, before stretching; even: all the same.
    std::array<double, 256> spacing{};
    bool even = true;
};

}  // namespace platform_linux::pdf
