#include "pictures/bmp_header.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string>

#include "pictures/little_endian.h"
#include "pictures/picture_error.h"
#include "pictures/picture_size.h"
#include "platform/picture.h"

namespace pictures {

namespace {

constexpr std::size_t coreHeaderSize = 12;
constexpr std::size_t smallestOs2HeaderSize = 16;
constexpr std::size_t infoHeaderSize = 40;
constexpr std::size_t masksHeaderSize = 52;
constexpr std::size_t alphaHeaderSize = 56;
constexpr std::size_t os2HeaderSize = 64;
constexpr double inchesPerMeter = 1 / 0.0254;

enum Compression : std::uint32_t { none = 0, runLengths8 = 1, runLengths4 = 2, bitFields = 3, alphaBitFields = 6 };

[[noreturn]] void refuse(std::string_view fault) { refusePicture("BMP", fault); }

bool isOs2(std::size_t size) {
    return size < infoHeaderSize ||
           (size > infoHeaderSize && size <= os2HeaderSize && size != masksHeaderSize && size != alphaHeaderSize);
}

void readSize(BmpHeader& header, std::string_view fields) {
    const bool core = header.headerSize == coreHeaderSize;
    const auto signedAt = [&](std::size_t position) {
        return std::int64_t{static_cast<std::int32_t>(numberAt32(fields, position))};
    };
    const std::int64_t width = core ? numberAt16(fields, 4) : signedAt(4);
    const std::int64_t height = core ? numberAt16(fields, 6) : signedAt(8);
    header.bitsPerPixel = static_cast<int>(numberAt16(fields, core ? 10 : 14));
    constexpr std::array depths = {1, 2, 4, 8, 16, 24, 32};
    if (std::find(depths.begin(), depths.end(), header.bitsPerPixel) == depths.end()) {
        refuse("hat " + std::to_string(header.bitsPerPixel) + " Bits je Bildpunkt, was es nicht gibt");
    }
    header.topDown = height < 0;
    checkPictureSize(width, header.topDown ? -height : height, header.pictureBits());
    header.width = static_cast<int>(width);
    header.height = static_cast<int>(header.topDown ? -height : height);
}

bool isOneStretch(std::uint32_t mask) {
    return mask != 0 && std::countl_zero(mask) + std::popcount(mask) + std::countr_zero(mask) == 32;
}

void checkMasks(const BmpHeader& header) {
    const BmpMasks& masks = header.masks;
    const std::uint64_t sum = std::uint64_t{masks.red} + masks.green + masks.blue + masks.alpha;
    const bool sound = isOneStretch(masks.red) && isOneStretch(masks.green) && isOneStretch(masks.blue) &&
                       (masks.alpha == 0 || isOneStretch(masks.alpha)) &&
                       sum == (masks.red | masks.green | masks.blue | masks.alpha) && sum >> header.bitsPerPixel == 0;
    if (!sound) {
        refuse("hat Farbmasken, die es nicht gibt");
    }
}

// Reads the masks and returns how many bytes of them stand behind the header.
std::size_t readMasks(BmpHeader& header, std::string_view content, std::uint32_t compression) {
    if (compression == none) {
        header.masks =
            header.bitsPerPixel == 16 ? BmpMasks{0x7C00, 0x03E0, 0x001F, 0} : BmpMasks{0xFF0000, 0x00FF00, 0x0000FF, 0};
        return 0;
    }
    const std::size_t at = bmpHeaderAt + infoHeaderSize;
    const bool behind = header.headerSize == infoHeaderSize;
    const bool withAlpha = behind ? compression == alphaBitFields : header.headerSize >= alphaHeaderSize;
    header.masks = {numberAt32(content, at), numberAt32(content, at + 4), numberAt32(content, at + 8),
                    withAlpha ? numberAt32(content, at + 12) : 0};
    checkMasks(header);
    return behind ? (withAlpha ? 16 : 12) : 0;
}

// Returns how many bytes of masks stand behind the header.
std::size_t readCompression(BmpHeader& header, std::string_view content, std::uint32_t compression) {
    const int bits = header.bitsPerPixel;
    const bool masked = (compression == bitFields || compression == alphaBitFields) && (bits == 16 || bits == 32) &&
                        !isOs2(header.headerSize);
    header.runLengths = (compression == runLengths8 && bits == 8) || (compression == runLengths4 && bits == 4);
    if (compression != none && !header.runLengths && !masked) {
        refuse("ist auf eine Art komprimiert (Nummer " + std::to_string(compression) + " bei " + std::to_string(bits) +
               " Bits je Bildpunkt), die es nicht gibt oder die hier nicht gelesen wird");
    }
    return readMasks(header, content, compression == none || masked ? compression : std::uint32_t{none});
}

// An offset of the pixels inside the palette means a short palette, unless palette and pixels both fit into the file;
// one in front of it or behind the end means nothing.
void placePixels(BmpHeader& header, std::string_view content, std::uint64_t pixelBytes) {
    const std::size_t stated = numberAt32(content, bmpPixelOffsetAt);
    const std::size_t end = header.paletteEnd();
    const auto fits = [&](std::size_t offset) {
        return offset <= content.size() && pixelBytes <= content.size() - offset;
    };
    const bool plausible = stated >= header.paletteAt && stated < content.size() && fits(stated);
    const bool lies = stated < end && !header.runLengths && fits(end);
    header.pixelsAt = plausible && !lies ? stated : end;
    if (header.pixelsAt < end) {
        header.colors = (header.pixelsAt - header.paletteAt) / header.colorSize;
    }
    if (header.pixelsAt >= content.size() || !fits(header.pixelsAt)) {
        refuse("ist unvollständig: Sie ist " + std::to_string(content.size()) +
               " Bytes lang, ihre Bildpunkte beginnen bei " + std::to_string(header.pixelsAt) + " und brauchen " +
               std::to_string(pixelBytes));
    }
}

void readPalette(BmpHeader& header, std::string_view fields) {
    header.colorSize = header.headerSize == coreHeaderSize ? 3 : 4;
    if (header.bitsPerPixel > 8) {
        return;
    }
    const std::size_t most = std::size_t{1} << header.bitsPerPixel;
    const std::size_t used = numberAt32(fields, bmpColorsUsedAt - bmpHeaderAt);
    header.colors = used == 0 ? most : std::min(used, most);
}

}  // namespace

BmpHeader readBmpHeader(std::string_view content) {
    BmpHeader header;
    header.headerSize = numberAt32(content, bmpHeaderAt);
    if (header.headerSize != coreHeaderSize && header.headerSize < smallestOs2HeaderSize) {
        refuse("hat einen Kopf von " + std::to_string(header.headerSize) + " Bytes, was es nicht gibt");
    }
    if (content.size() <= bmpHeaderAt || header.headerSize > content.size() - bmpHeaderAt) {
        refuse("ist unvollständig: Sie endet in ihrem Kopf");
    }
    const std::string_view fields = content.substr(bmpHeaderAt, header.headerSize);
    readSize(header, fields);
    const bool core = header.headerSize == coreHeaderSize;
    const std::size_t masks = readCompression(header, content, core ? std::uint32_t{none} : numberAt32(fields, 16));
    if (!core) {
        const auto dpi = [&](std::size_t at) {
            return std::max(0, static_cast<std::int32_t>(numberAt32(fields, at))) / inchesPerMeter;
        };
        header.dpiX = dpi(24);
        header.dpiY = dpi(28);
    }
    header.paletteAt = bmpHeaderAt + header.headerSize + masks;
    readPalette(header, fields);
    const std::uint64_t rows = static_cast<std::uint64_t>(header.height) - 1;
    placePixels(header, content, header.runLengths ? 0 : rows * header.rowSize() + header.rowPixelBytes());
    return header;
}

}  // namespace pictures
