// The headers of BMP files: BITMAPCOREHEADER (OS/2 1.x, 12 bytes), OS/2 2.x (16 to 64 bytes), BITMAPINFOHEADER (40),
// its extensions by masks (52 and 56), BITMAPV4HEADER (108) and BITMAPV5HEADER (124), as the Windows and OS/2
// programming references have them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/picture.h"

namespace pictures {

// Where the fields stand that are written as well as read; all but the last from the beginning of the file.
inline constexpr std::size_t bmpFileSizeAt = 2;
inline constexpr std::size_t bmpPixelOffsetAt = 10;
inline constexpr std::size_t bmpHeaderAt = 14;
inline constexpr std::size_t bmpDataSizeAt = bmpHeaderAt + 20;
inline constexpr std::size_t bmpColorsUsedAt = bmpHeaderAt + 32;
inline constexpr std::size_t bmpProfileOffsetAt = bmpHeaderAt + 112;  // in a BITMAPV5HEADER, counted from bmpHeaderAt

// Which bits of a pixel are a channel. Each mask is one stretch of bits, they do not overlap, and only alpha may be 0:
// then pictures are opaque.
struct BmpMasks {
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    std::uint32_t alpha = 0;
};

struct BmpHeader {
    std::size_t headerSize = 0;
    int width = 0;
    int height = 0;
    bool topDown = false;
    int bitsPerPixel = 0;     // 1, 2, 4, 8, 16, 24 or 32
    bool runLengths = false;  // RLE8 or RLE4, as the depth says
    BmpMasks masks;           // of 16 and 32 bits
    std::size_t paletteAt = 0;
    std::size_t colorSize = 4;  // bytes: blue, green, red, and one more in all but BITMAPCOREHEADER
    std::size_t colors = 0;     // that the file really has
    std::size_t pixelsAt = 0;
    double dpiX = 0;
    double dpiY = 0;

    std::size_t paletteEnd() const { return paletteAt + colors * colorSize; }
    // Bytes of a row of uncompressed pixels, filled up to a multiple of four.
    std::size_t rowSize() const { return (rowPixelBytes() + 3) / 4 * 4; }
    std::size_t rowPixelBytes() const {
        return static_cast<std::size_t>((static_cast<std::uint64_t>(width) * static_cast<unsigned>(bitsPerPixel) + 7) /
                                        8);
    }
    // The depth of the picture in memory.
    int pictureBits() const { return bitsPerPixel <= 8 ? bitsPerPixel : 24; }
    platform::PictureInfo info() const { return {width, height, pictureBits(), dpiX, dpiY}; }
};

// Reads and checks the header of a file that begins with "BM". What it returns is true of the file: the size is one
// that checkPictureSize() allows, uncompressed pixels are all there, and so are the palette's colours, of which the
// file may have fewer than it says. errInvalidPicture otherwise.
BmpHeader readBmpHeader(std::string_view content);

}  // namespace pictures
