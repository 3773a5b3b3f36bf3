// The header of PCX files, 128 bytes, as the technical reference manual of the format's makers has it.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/picture.h"

namespace pictures {

inline constexpr std::size_t pcxHeaderSize = 128;
inline constexpr std::size_t pcxVersionAt = 1;
inline constexpr std::size_t pcxPaletteAt = 16;

// What a version knows: 0 (no palette of its own), 2 (with), 3 (without), 4 (for Windows), 5 (256 colours and 24 bits
// too).
inline constexpr int pcxWithoutPalette = 3;
inline constexpr int pcxLatestVersion = 5;

struct PcxHeader {
    int version = 0;
    bool runLengths = false;
    int bits = 0;  // of a pixel in one plane: 1, 2, 4 or 8
    int planes =
        0;  // a pixel's number has bits * planes bits, those of the first plane the lowest; or 3 or 4 of 8: colours
    int width = 0;
    int height = 0;
    std::size_t bytesPerLine = 0;  // of one plane
    double dpiX = 0;
    double dpiY = 0;

    bool isColors() const { return bits == 8 && planes > 1; }
    int pixelBits() const { return bits * planes; }
    std::size_t lineSize() const { return bytesPerLine * static_cast<std::size_t>(planes); }
    // Bytes of a plane's line that hold pixels.
    std::size_t usedBytes() const;
    // The depth of the picture in memory: that of the numbers, or the next one that there is.
    int pictureBits() const;
    platform::PictureInfo info() const { return {width, height, pictureBits(), dpiX, dpiY}; }
};

bool isPcx(std::string_view content);

// Reads and checks the header. What it returns is true of the file: the size is one that checkPictureSize() allows, and
// the file is long enough for its pixels, were all its runs as long as they can be. errInvalidPicture otherwise.
PcxHeader readPcxHeader(std::string_view content);

}  // namespace pictures
