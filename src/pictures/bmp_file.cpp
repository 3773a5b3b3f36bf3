#include "pictures/bmp_file.h"

#include <algorithm>
#include <cstring>

#include "pictures/bmp_channels.h"
#include "pictures/bmp_header.h"
#include "pictures/bmp_runs.h"
#include "pictures/little_endian.h"
#include "pictures/picture_size.h"
#include "pictures/pixel_rows.h"

namespace pictures {

namespace {

constexpr std::size_t profileHeaderSize = 124;

std::size_t fileRowAt(const BmpHeader& header, int row) {
    const int inFile = header.topDown ? row : header.height - 1 - row;
    return header.pixelsAt + static_cast<std::size_t>(inFile) * header.rowSize();
}

platform::Color colorAt(std::string_view content, std::size_t at) {
    return {byteAt(content, at + 2), byteAt(content, at + 1), byteAt(content, at)};
}

void putColor(std::string& content, std::size_t at, const platform::Color& color) {
    content[at] = static_cast<char>(color.blue);
    content[at + 1] = static_cast<char>(color.green);
    content[at + 2] = static_cast<char>(color.red);
}

void decodeRows(std::string_view content, const BmpHeader& header, platform::Picture& picture) {
    const std::size_t stride = picture.stride();
    const std::uint8_t lastByte = lastByteMask(header.width, header.bitsPerPixel);
    for (int row = 0; row < header.height; ++row) {
        std::uint8_t* to = rowOf(picture, row);
        std::memcpy(to, pixelsAt(content, fileRowAt(header, row)), stride);
        to[stride - 1] &= lastByte;
    }
}

void decodeColors(std::string_view content, const BmpHeader& header, platform::Picture& picture) {
    const BmpColors colors(header, content);
    for (int row = 0; row < header.height; ++row) {
        colors.decodeRow(pixelsAt(content, fileRowAt(header, row)), rowOf(picture, row));
    }
}

void encodeRows(const platform::Picture& picture, const BmpHeader& header, std::string& content) {
    const std::size_t whole = picture.stride() - 1;
    const std::uint8_t lastByte = lastByteMask(header.width, header.bitsPerPixel);
    for (int row = 0; row < header.height; ++row) {
        const std::uint8_t* from = rowOf(picture, row);
        std::uint8_t* to = pixelsAt(content, fileRowAt(header, row));
        std::memcpy(to, from, whole);
        to[whole] = static_cast<std::uint8_t>((from[whole] & lastByte) | (to[whole] & ~lastByte));
    }
}

void encodeColors(const platform::Picture& picture, const BmpHeader& header, std::string& content) {
    const BmpColors colors(header, content);
    for (int row = 0; row < header.height; ++row) {
        colors.encodeRow(rowOf(picture, row), pixelsAt(content, fileRowAt(header, row)));
    }
}

std::size_t highestNumber(const platform::Picture& picture) {
    std::uint8_t highest = 0;
    const unsigned mask = (1U << picture.bitsPerPixel) - 1;
    for (const std::uint8_t byte : picture.pixels) {
        for (int shift = 0; shift < 8; shift += picture.bitsPerPixel) {
            highest = std::max(highest, static_cast<std::uint8_t>(byte >> shift & mask));
        }
    }
    return highest;
}

bool paletteSuffices(const platform::Picture& picture, const BmpHeader& header) {
    const auto beyond = picture.palette.begin() + static_cast<std::ptrdiff_t>(header.colors);
    const bool allBlack = std::all_of(beyond, picture.palette.end(),
                                      [](const platform::Color& color) { return color == platform::Color{}; });
    return allBlack || highestNumber(picture) < header.colors;
}

// Moves the offsets that the header states to what stands behind the place where bytes have come or gone.
void moveOffsets(const BmpHeader& header, std::string& content, std::size_t from, std::size_t bytesBefore) {
    const auto moved = static_cast<std::uint32_t>(content.size() - bytesBefore);
    putNumber32(content, bmpFileSizeAt, static_cast<std::uint32_t>(content.size()));
    if (header.headerSize == profileHeaderSize) {
        const std::uint32_t profile = numberAt32(content, bmpProfileOffsetAt);
        if (profile != 0 && profile + bmpHeaderAt >= from) {
            putNumber32(content, bmpProfileOffsetAt, profile + moved);
        }
    }
}

void completePalette(BmpHeader& header, std::string& content) {
    const std::size_t missing = (std::size_t{1} << header.bitsPerPixel) - header.colors;
    const std::size_t before = content.size();
    content.insert(header.paletteEnd(), missing * header.colorSize, '\0');
    moveOffsets(header, content, header.paletteEnd(), before);
    header.colors += missing;
    header.pixelsAt += missing * header.colorSize;
    putNumber32(content, bmpPixelOffsetAt, static_cast<std::uint32_t>(header.pixelsAt));
    if (bmpHeaderAt + header.headerSize >= bmpColorsUsedAt + 4) {
        putNumber32(content, bmpColorsUsedAt, 0);
    }
}

void encodePalette(const platform::Picture& picture, BmpHeader& header, std::string& content) {
    if (!paletteSuffices(picture, header)) {
        completePalette(header, content);
    }
    for (std::size_t number = 0; number < header.colors; ++number) {
        putColor(content, header.paletteAt + number * header.colorSize, picture.palette[number]);
    }
}

void encodeRuns(const platform::Picture& picture, const BmpHeader& header, std::string& content) {
    platform::Picture before = makePicture(header.width, header.height, header.bitsPerPixel);
    const std::size_t end = decodeBmpRuns(content, header, &before);
    const std::size_t sizeBefore = content.size();
    const std::string runs = encodeBmpRuns(picture, header.topDown);
    content.replace(header.pixelsAt, end - header.pixelsAt, runs);
    moveOffsets(header, content, end, sizeBefore);
    putNumber32(content, bmpPixelOffsetAt, static_cast<std::uint32_t>(header.pixelsAt));
    if (bmpHeaderAt + header.headerSize >= bmpDataSizeAt + 4) {
        putNumber32(content, bmpDataSizeAt, static_cast<std::uint32_t>(runs.size()));
    }
}

}  // namespace

bool isBmp(std::string_view content) { return content.starts_with("BM"); }

platform::PictureInfo inspectBmp(std::string_view content) {
    const BmpHeader header = readBmpHeader(content);
    if (header.runLengths) {
        decodeBmpRuns(content, header, nullptr);
    }
    return header.info();
}

platform::Picture decodeBmp(std::string_view content) {
    const BmpHeader header = readBmpHeader(content);
    platform::Picture picture = makePicture(header.width, header.height, header.pictureBits());
    static_cast<platform::PictureInfo&>(picture) = header.info();
    if (header.bitsPerPixel > 8) {
        decodeColors(content, header, picture);
        return picture;
    }
    for (std::size_t number = 0; number < header.colors; ++number) {
        picture.palette[number] = colorAt(content, header.paletteAt + number * header.colorSize);
    }
    if (header.runLengths) {
        decodeBmpRuns(content, header, &picture);
    } else {
        decodeRows(content, header, picture);
    }
    return picture;
}

std::string encodeBmp(const platform::Picture& picture, std::string_view original) {
    BmpHeader header = readBmpHeader(original);
    std::string content(original);
    if (header.bitsPerPixel > 8) {
        encodeColors(picture, header, content);
        return content;
    }
    encodePalette(picture, header, content);
    if (header.runLengths) {
        encodeRuns(picture, header, content);
    } else {
        encodeRows(picture, header, content);
    }
    return content;
}

}  // namespace pictures
