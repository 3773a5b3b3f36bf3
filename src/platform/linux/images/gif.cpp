#include <leptonica/allheaders.h>

#include <memory>

#include "pictures/picture_size.h"
#include "platform/linux/images/codecs.h"

namespace platform_linux::images {

namespace {

using pictures::ForeignKind;
using platform::Picture;

struct Destroy {
    void operator()(PIX* pix) const { pixDestroy(&pix); }
};
using OwnedPix = std::unique_ptr<PIX, Destroy>;

constexpr std::size_t bytesPerWord = 4;

// The library's rows are words of 32 bits, the leftmost pixel in the most significant bits.
std::uint8_t byteOf(std::uint32_t word, std::size_t index) {
    return static_cast<std::uint8_t>(word >> (24 - 8 * (index % bytesPerWord)));
}

void readPixels(PIX* pix, Picture& picture) {
    const std::uint32_t* words = pixGetData(pix);
    const auto wordsPerRow = static_cast<std::size_t>(pixGetWpl(pix));
    std::uint8_t* to = picture.pixels.data();
    for (int y = 0; y < picture.height; ++y, words += wordsPerRow) {
        for (std::size_t x = 0; x < picture.stride(); ++x) {
            *to++ = byteOf(words[x / bytesPerWord], x);
        }
    }
}

void readPalette(PIXCMAP* colors, Picture& picture) {
    for (int i = 0; i < pixcmapGetCount(colors) && i < 1 << picture.bitsPerPixel; ++i) {
        int red = 0;
        int green = 0;
        int blue = 0;
        pixcmapGetColor(colors, i, &red, &green, &blue);
        picture.palette[static_cast<std::size_t>(i)] = {
            static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green), static_cast<std::uint8_t>(blue)};
    }
}

}  // namespace

Picture decodeGif(const pictures::ForeignPicture& file, std::string_view content) {
    setMsgSeverity(L_SEVERITY_NONE);
    // Further pictures of an animation would be decoded, too.
    const std::string first = std::string(content.substr(0, file.end)) + ';';
    const OwnedPix pix(pixReadMemGif(reinterpret_cast<const std::uint8_t*>(first.data()), first.size()));
    if (!pix || pixGetColormap(pix.get()) == nullptr || pixGetDepth(pix.get()) != file.stored.bitsPerPixel ||
        pixGetWidth(pix.get()) != file.stored.width || pixGetHeight(pix.get()) != file.stored.height) {
        pictures::refuseDamaged(ForeignKind::gif);
    }
    Picture picture = pictures::makePicture(file.stored.width, file.stored.height, file.stored.bitsPerPixel);
    readPalette(pixGetColormap(pix.get()), picture);
    if (const auto index = static_cast<std::size_t>(file.transparentColor);
        file.transparentColor >= 0 && index < picture.palette.size()) {
        picture.palette[index] = {255, 255, 255};
    }
    readPixels(pix.get(), picture);
    return picture;
}

}  // namespace platform_linux::images
