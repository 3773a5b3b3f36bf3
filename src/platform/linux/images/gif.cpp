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
    void operator()(PIXCMAP* colors) const { pixcmapDestroy(&colors); }
    void operator()(std::uint8_t* bytes) const { lept_free(bytes); }
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

// Nothing where there is no memory.
OwnedPix pixOf(const Picture& picture) {
    OwnedPix pix(pixCreate(picture.width, picture.height, picture.bitsPerPixel));
    std::unique_ptr<PIXCMAP, Destroy> colors(pixcmapCreate(picture.bitsPerPixel));
    if (!pix || !colors) {
        return nullptr;
    }
    for (const platform::Color& color : picture.palette) {
        pixcmapAddColor(colors.get(), color.red, color.green, color.blue);
    }
    pixSetColormap(pix.get(), colors.release());
    std::uint32_t* words = pixGetData(pix.get());
    const std::uint8_t* from = picture.pixels.data();
    for (int y = 0; y < picture.height; ++y, words += pixGetWpl(pix.get())) {
        for (std::size_t x = 0; x < picture.stride(); ++x) {
            words[x / bytesPerWord] |= std::uint32_t{*from++} << (24 - 8 * (x % bytesPerWord));
        }
    }
    return pix;
}

}  // namespace

Picture decodeGif(const pictures::ForeignPicture& file, std::string_view content) {
    setMsgSeverity(L_SEVERITY_NONE);
    // Further pictures of an animation would be decoded, too.
    const std::string first = std::string(content.substr(0, file.end)) + ';';
    const OwnedPix pix(pixReadMemGif(reinterpret_cast<const std::uint8_t*>(first.data()), first.size()));
    if (!pix || pixGetColormap(pix.get()) == nullptr || pixGetDepth(pix.get()) != file.bitsPerPixel ||
        pixGetWidth(pix.get()) != file.width || pixGetHeight(pix.get()) != file.height) {
        pictures::refuseDamaged(ForeignKind::gif);
    }
    Picture picture = pictures::makePicture(file.width, file.height, file.bitsPerPixel);
    readPalette(pixGetColormap(pix.get()), picture);
    if (const auto index = static_cast<std::size_t>(file.transparentColor);
        file.transparentColor >= 0 && index < picture.palette.size()) {
        picture.palette[index] = {255, 255, 255};
    }
    readPixels(pix.get(), picture);
    return picture;
}

std::string encodeGif(const Picture& picture) {
    setMsgSeverity(L_SEVERITY_NONE);
    const OwnedPix pix = pixOf(picture);
    std::uint8_t* bytes = nullptr;
    std::size_t size = 0;
    const bool written = pix && pixWriteMemGif(&bytes, &size, pix.get()) == 0;
    const std::unique_ptr<std::uint8_t, Destroy> owner(bytes);
    if (!written) {
        throw std::bad_alloc();
    }
    return {reinterpret_cast<const char*>(bytes), size};
}

}  // namespace platform_linux::images
