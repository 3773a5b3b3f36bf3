#include "pictures/picture_file.h"

#include <algorithm>
#include <array>
#include <optional>

#include "pictures/bmp_file.h"
#include "pictures/pcx_file.h"
#include "pictures/pcx_header.h"
#include "pictures/pixel_rows.h"

namespace pictures {

namespace {

using Numbers = std::array<std::uint8_t, 256>;

platform::Color oppositeOf(const platform::Color& color) {
    const auto opposite = [](std::uint8_t value) { return static_cast<std::uint8_t>(255 - value); };
    return {opposite(color.red), opposite(color.green), opposite(color.blue)};
}

// For each number of the palette that of the opposite colour, where all of them have one.
std::optional<Numbers> oppositeNumbers(const std::vector<platform::Color>& palette) {
    Numbers numbers{};
    for (std::size_t number = 0; number < palette.size(); ++number) {
        const auto found = std::find(palette.begin(), palette.end(), oppositeOf(palette[number]));
        if (found == palette.end()) {
            return std::nullopt;
        }
        numbers[number] = static_cast<std::uint8_t>(found - palette.begin());
    }
    return numbers;
}

Numbers forWholeBytes(const Numbers& numbers, int bitsPerPixel) {
    Numbers bytes{};
    const unsigned mask = (1U << bitsPerPixel) - 1;
    for (unsigned byte = 0; byte < bytes.size(); ++byte) {
        for (int shift = 0; shift < 8; shift += bitsPerPixel) {
            bytes[byte] = static_cast<std::uint8_t>(bytes[byte] | numbers[byte >> shift & mask] << shift);
        }
    }
    return bytes;
}

void replaceNumbers(platform::Picture& picture, const Numbers& numbers) {
    const Numbers bytes = forWholeBytes(numbers, picture.bitsPerPixel);
    for (std::uint8_t& byte : picture.pixels) {
        byte = bytes[byte];
    }
    const std::uint8_t lastByte = lastByteMask(picture.width, picture.bitsPerPixel);
    for (int row = 0; row < picture.height; ++row) {
        rowOf(picture, row)[picture.stride() - 1] &= lastByte;
    }
}

}  // namespace

platform::PictureInfo inspectPicture(std::string_view content, platform::ImageFiles& others) {
    return isBmp(content) ? inspectBmp(content) : isPcx(content) ? inspectPcx(content) : others.inspect(content);
}

platform::Picture decodePicture(std::string_view content, platform::ImageFiles& others) {
    return isBmp(content) ? decodeBmp(content) : isPcx(content) ? decodePcx(content) : others.decode(content);
}

std::string invertedFile(std::string_view content, platform::ImageFiles& others) {
    if (!isBmp(content) && !isPcx(content)) {
        return others.inverted(content);
    }
    platform::Picture picture = decodePicture(content, others);
    invert(picture);
    return isBmp(content) ? encodeBmp(picture, content) : encodePcx(picture, content);
}

void invert(platform::Picture& picture) {
    picture.jpeg.clear();
    if (picture.bitsPerPixel == 24) {
        for (std::uint8_t& byte : picture.pixels) {
            byte = static_cast<std::uint8_t>(255 - byte);
        }
    } else if (const auto numbers = oppositeNumbers(picture.palette)) {
        replaceNumbers(picture, *numbers);
    } else {
        std::transform(picture.palette.begin(), picture.palette.end(), picture.palette.begin(), oppositeOf);
    }
}

}  // namespace pictures
