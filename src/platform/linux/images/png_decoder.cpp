#include <vector>

#include "pictures/colors.h"
#include "pictures/picture_size.h"
#include "platform/linux/images/codecs.h"
#include "platform/linux/images/png_reader.h"

namespace platform_linux::images {

namespace {

using pictures::ForeignPicture;
using platform::Picture;

// Pixels of one or three channels and an opacity become such without.
void layOnWhite(const std::vector<std::uint8_t>& raster, int channels, Picture& picture) {
    const std::size_t colors = static_cast<std::size_t>(channels) - 1;
    const std::uint8_t* from = raster.data();
    for (std::size_t i = 0; i < picture.pixels.size(); i += colors, from += channels) {
        for (std::size_t channel = 0; channel < colors; ++channel) {
            picture.pixels[i + channel] = pictures::onWhite(from[channel], from[colors]);
        }
    }
}

}  // namespace

Picture decodePng(const ForeignPicture& file, std::string_view content) {
    PngReader reader(content);
    reader.readHeader(PngPixels::asShown);
    Picture picture = pictures::makePicture(file.stored.width, file.stored.height, file.stored.bitsPerPixel);
    if (file.palette) {
        picture.palette = reader.palette(file.stored.bitsPerPixel);
    } else if (file.stored.bitsPerPixel <= 8) {
        picture.palette = pictures::greyPalette(file.stored.bitsPerPixel);
    }
    const int channels = reader.channels();
    if (channels == 2 || channels == 4) {
        std::vector<std::uint8_t> raster(reader.rowBytes() * static_cast<std::size_t>(file.stored.height));
        reader.readRows(raster, file.stored.height);
        layOnWhite(raster, channels, picture);
    } else if (reader.rowBytes() == picture.stride()) {
        reader.readRows(picture.pixels, file.stored.height);
    } else {
        pictures::refuseDamaged(file.kind);
    }
    return picture;
}

}  // namespace platform_linux::images
