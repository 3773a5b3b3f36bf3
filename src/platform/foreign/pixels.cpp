#include "platform/foreign/pixels.h"

#include <algorithm>

namespace platform::foreign {

std::vector<Color> greyPalette(int bits) {
    const int last = (1 << bits) - 1;
    std::vector<Color> palette;
    for (int i = 0; i <= last; ++i) {
        const auto shade = static_cast<std::uint8_t>(i * 255 / last);
        palette.push_back({shade, shade, shade});
    }
    return palette;
}

std::vector<Color> reversedGreyPalette(int bits) {
    std::vector<Color> palette = greyPalette(bits);
    std::reverse(palette.begin(), palette.end());
    return palette;
}

}  // namespace platform::foreign
