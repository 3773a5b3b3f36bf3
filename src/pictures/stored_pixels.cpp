#include "pictures/stored_pixels.h"

#include <algorithm>
#include <utility>

#include "pictures/picture_size.h"
#include "pictures/pixel_rows.h"

namespace pictures {

namespace {

using platform::Color;
using platform::Picture;

constexpr Color white{255, 255, 255};

// A pixel of up to 8 bits, or its three bytes as a number.
std::uint32_t pixelAt(const Picture& picture, std::int64_t x, std::int64_t y) {
    const std::uint8_t* row = rowOf(picture, y);
    if (picture.bitsPerPixel == 24) {
        row += 3 * x;
        return std::uint32_t{row[0]} << 16 | std::uint32_t{row[1]} << 8 | row[2];
    }
    const std::int64_t bit = x * picture.bitsPerPixel;
    return static_cast<std::uint32_t>(row[bit / 8] >> (8 - picture.bitsPerPixel - bit % 8)) &
           ((1U << picture.bitsPerPixel) - 1);
}

// Over a pixel that is 0.
void putPixel(Picture& picture, std::int64_t x, std::int64_t y, std::uint32_t pixel) {
    std::uint8_t* row = rowOf(picture, y);
    if (picture.bitsPerPixel == 24) {
        row += 3 * x;
        row[0] = static_cast<std::uint8_t>(pixel >> 16);
        row[1] = static_cast<std::uint8_t>(pixel >> 8);
        row[2] = static_cast<std::uint8_t>(pixel);
        return;
    }
    const std::int64_t bit = x * picture.bitsPerPixel;
    row[bit / 8] = static_cast<std::uint8_t>(row[bit / 8] | pixel << (8 - picture.bitsPerPixel - bit % 8));
}

std::uint32_t number(const Color& color) {
    return std::uint32_t{color.red} << 16 | std::uint32_t{color.green} << 8 | color.blue;
}

Picture onScreen(Picture stored, const ForeignPicture& file) {
    const StoredPixels& frame = file.stored;
    if (frame.width == file.width && frame.height == file.height) {
        return stored;
    }
    const int bits = std::max(stored.bitsPerPixel, file.bitsPerPixel);
    Picture screen = makePicture(file.width, file.height, bits);
    const auto around = std::find(stored.palette.begin(), stored.palette.end(), white);
    const std::uint32_t free = bits == 24 ? number(white) : static_cast<std::uint32_t>(around - stored.palette.begin());
    const bool colors = stored.bitsPerPixel < bits;
    for (std::int64_t y = 0; y < file.height; ++y) {
        const bool rowInside = y >= frame.top && y < frame.top + frame.height;
        for (std::int64_t x = 0; x < file.width; ++x) {
            std::uint32_t pixel = free;
            if (rowInside && x >= frame.left && x < frame.left + frame.width) {
                pixel = pixelAt(stored, x - frame.left, y - frame.top);
                pixel = colors ? number(stored.palette[pixel]) : pixel;
            }
            putPixel(screen, x, y, pixel);
        }
    }
    if (bits < 24) {
        screen.palette = std::move(stored.palette);
    }
    return screen;
}

// TIFF 6.0, section 8, "Orientation": the sides on which the first row and the first column of the file lie.
Picture turned(Picture stored, const ForeignPicture& file) {
    const int orientation = file.orientation;
    if (orientation == 1) {
        return stored;
    }
    const bool onItsSide = orientation >= 5;
    const bool rowsBackwards = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    const bool columnsBackwards = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
    Picture picture = makePicture(file.width, file.height, stored.bitsPerPixel);
    for (std::int64_t row = 0; row < stored.height; ++row) {
        const std::int64_t across = rowsBackwards ? stored.height - 1 - row : row;
        for (std::int64_t column = 0; column < stored.width; ++column) {
            const std::int64_t along = columnsBackwards ? stored.width - 1 - column : column;
            putPixel(picture, onItsSide ? across : along, onItsSide ? along : across, pixelAt(stored, column, row));
        }
    }
    picture.palette = std::move(stored.palette);
    return picture;
}

}  // namespace

Picture completed(Picture stored, const ForeignPicture& file) {
    Picture picture =
        file.kind == ForeignKind::gif ? onScreen(std::move(stored), file) : turned(std::move(stored), file);
    picture.dpiX = file.dpiX;
    picture.dpiY = file.dpiY;
    return picture;
}

}  // namespace pictures
