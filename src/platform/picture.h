// Pictures as surfaces draw them and picture files give them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/color.h"

namespace platform {

// What is known of a picture without its pixels.
struct PictureInfo {
    int width = 0;  // pixels, at least 1
    int height = 0;
    // 1, 2, 4 or 8: a pixel is a number in the palette. 24: a pixel is three bytes, red, green, blue.
    int bitsPerPixel = 0;
    double dpiX = 0;  // dots per inch that the file states; 0 where it states none
    double dpiY = 0;

    // Bytes of a row.
    std::size_t stride() const { return strideOf(width, bitsPerPixel); }
    static std::size_t strideOf(int width, int bitsPerPixel) {
        return static_cast<std::size_t>((static_cast<std::uint64_t>(width) * static_cast<unsigned>(bitsPerPixel) + 7) /
                                        8);
    }
};

// Pixels in memory. Rows run from the top, each of stride() bytes, the leftmost pixel in the most significant bits.
struct Picture : PictureInfo {
    std::vector<Color> palette;  // 2 to the power of bitsPerPixel colours; none with 24 bits
    std::vector<std::uint8_t> pixels;
    // The JPEG file (ISO/IEC 10918-1) that these pixels were read from, so that a device that knows the format can take
    // it as it is; empty for pictures from elsewhere and for changed ones.
    std::string jpeg;
};

}  // namespace platform
