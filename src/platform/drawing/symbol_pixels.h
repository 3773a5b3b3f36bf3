// A symbol as pixels, for surfaces that have no way of their own to draw smooth lines.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/symbol.h"

namespace platform::drawing {

// How opaque each pixel of a square is that the symbol fills, row by row from the top; 255 hides what is below. So many
// pixels wide and high; none for a size below 1. Upright and level lines begin and end on whole pixels and so stay
// sharp in every size.
std::vector<std::uint8_t> symbolPixels(const Symbol& symbol, int size);

}  // namespace platform::drawing
