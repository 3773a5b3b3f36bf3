#include "platform/drawing/grey.h"

#include <algorithm>

namespace platform::drawing {

namespace {

std::uint8_t luma(int red, int green, int blue) {
    return static_cast<std::uint8_t>((299 * red + 587 * green + 114 * blue + 500) / 1000);
}

bool isGreyColor(Color color) { return color.red == color.green && color.green == color.blue; }

Picture withoutPixels(const Picture& picture) {
    Picture grey;
    grey.width = picture.width;
    grey.height = picture.height;
    grey.bitsPerPixel = std::min(picture.bitsPerPixel, 8);
    grey.dpiX = picture.dpiX;
    grey.dpiY = picture.dpiY;
    return grey;
}

}  // namespace

Color greyOf(Color color) {
    const std::uint8_t grey = luma(color.red, color.green, color.blue);
    return {grey, grey, grey};
}

Picture greyOf(const Picture& picture) {
    Picture grey = withoutPixels(picture);
    if (picture.bitsPerPixel <= 8) {
        grey.pixels = picture.pixels;
        std::transform(picture.palette.begin(), picture.palette.end(), std::back_inserter(grey.palette),
                       [](Color color) { return greyOf(color); });
        return grey;
    }
    for (int level = 0; level < 256; ++level) {
        const auto shade = static_cast<std::uint8_t>(level);
        grey.palette.push_back({shade, shade, shade});
    }
    grey.pixels.resize(picture.pixels.size() / 3);
    for (std::size_t pixel = 0; pixel < grey.pixels.size(); ++pixel) {
        const std::uint8_t* rgb = &picture.pixels[pixel * 3];
        grey.pixels[pixel] = luma(rgb[0], rgb[1], rgb[2]);
    }
    return grey;
}

bool isGrey(const Picture& picture) {
    return picture.bitsPerPixel <= 8 && std::all_of(picture.palette.begin(), picture.palette.end(), isGreyColor);
}

}  // namespace platform::drawing
