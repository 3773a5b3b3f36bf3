#include "pictures/colors.h"

#include <algorithm>

namespace pictures {

std::vector<platform::Color> greyPalette(int bits) {
    const int last = (1 << bits) - 1;
    std::vector<platform::Color> palette;
    for (int i = 0; i <= last; ++i) {
        const auto shade = static_cast<std::uint8_t>(i * 255 / last);
        palette.push_back({shade, shade, shade});
    }
    return palette;
}

std::vector<platform::Color> reversedGreyPalette(int bits) {
    std::vector<platform::Color> palette = greyPalette(bits);
    std::reverse(palette.begin(), palette.end());
    return palette;
}

}  // namespace pictures
