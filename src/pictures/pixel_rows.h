// Rows of pixels, as pictures and their files have them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/picture.h"

namespace pictures {

// The row of a picture, 0 the topmost.
inline std::uint8_t* rowOf(platform::Picture& picture, std::int64_t row) {
    return picture.pixels.data() + static_cast<std::size_t>(row) * picture.stride();
}

inline const std::uint8_t* rowOf(const platform::Picture& picture, std::int64_t row) {
    return picture.pixels.data() + static_cast<std::size_t>(row) * picture.stride();
}

// The bits of a row's last byte that belong to pixels.
inline std::uint8_t lastByteMask(int width, int bitsPerPixel) {
    const int used = static_cast<int>(static_cast<std::int64_t>(width) * bitsPerPixel % 8);
    return static_cast<std::uint8_t>(used == 0 ? 0xFF : 0xFF << (8 - used));
}

}  // namespace pictures
