// A font at one size, as page contents use it.
#pragma once

#include <array>
#include <cstdint>

namespace platform_linux::pdf {

// Lengths are device pixels.
struct FontSize {
    int resource = 0;                         // number of the font among the document's fonts
    std::int64_t em = 0;                      // height of the em square
    double stretch = 1;                       // pixels per inch across, by those down: 1 but for oblong pixels
    std::array<std::int64_t, 256> advance{};  // of each byte, whole pixels
    // What each byte's advance has more than the font's own widths give it, before stretching; even: all the same.
    std::array<double, 256> spacing{};
    bool even = true;
    std::int64_t ascent = 0;        // top of the character cell to the baseline
    std::int64_t descent = 0;       // baseline to the bottom of the cell
    std::int64_t underlineTop = 0;  // below the baseline
    std::int64_t underlineThickness = 1;
};

}  // namespace platform_linux::pdf
