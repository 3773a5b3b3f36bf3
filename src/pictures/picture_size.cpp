#include "pictures/picture_size.h"

#include "runtime/error.h"

namespace pictures {

using platform::Picture;

void checkPictureSize(std::int64_t width, std::int64_t height, int bitsPerPixel) {
    const auto refuse = [&](const std::string& reason) {
        throw runtime::Error(runtime::errInvalidPicture, "Das Bild hat laut seiner Datei " + std::to_string(width) +
                                                             " x " + std::to_string(height) + " Bildpunkte" + reason);
    };
    constexpr std::int64_t longestSide = mostPicturePixels;
    if (width < 1 || height < 1) {
        refuse(". Die Datei ist beschädigt oder kein Bild.");
    }
    const std::int64_t rowBytes = (width > longestSide ? longestSide : width) * bitsPerPixel / 8 + 1;
    if (width > longestSide || height > longestSide || width > mostPicturePixels / height ||
        rowBytes > mostPictureBytes / height) {
        refuse("; gedruckt werden höchstens " + std::to_string(mostPicturePixels / 1'000'000) +
               " Millionen, die im Speicher nicht mehr als " + std::to_string(mostPictureBytes / 1024 / 1024) +
               " MiB brauchen. Bitte das Bild verkleinern.");
    }
}

Picture makePicture(std::int64_t width, std::int64_t height, int bitsPerPixel) {
    checkPictureSize(width, height, bitsPerPixel);
    Picture picture;
    picture.width = static_cast<int>(width);
    picture.height = static_cast<int>(height);
    picture.bitsPerPixel = bitsPerPixel;
    if (bitsPerPixel <= 8) {
        picture.palette.resize(std::size_t{1} << bitsPerPixel);
    }
    picture.pixels.resize(picture.stride() * static_cast<std::size_t>(height));
    return picture;
}

}  // namespace pictures
