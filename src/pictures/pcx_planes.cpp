#include "pictures/pcx_planes.h"

#include <algorithm>
#include <cstring>

#include "pictures/colors.h"
#include "pictures/pixel_rows.h"

namespace pictures {

PcxPlanes::PcxPlanes(const PcxHeader& header)
    : header_(header),
      pictureBits_(header.pictureBits()),
      stride_(platform::Picture::strideOf(header.width, pictureBits_)) {
    const unsigned mask = (1U << header.bits) - 1;
    for (unsigned byte = 0; byte < spread_.size() && !header.isColors(); ++byte) {
        for (int shift = 8 - header.bits; shift >= 0; shift -= header.bits) {
            spread_[byte] = spread_[byte] << pictureBits_ | (byte >> shift & mask);
        }
    }
}

void PcxPlanes::join(const std::uint8_t* line, std::uint8_t* row, bool withAlpha) const {
    if (header_.isColors()) {
        joinColors(line, row, withAlpha);
        return;
    }
    switch (pictureBits_ / header_.bits) {
        case 1:
            std::memcpy(row, line, stride_);
            break;
        case 2:
            joinNumbers<2>(line, row);
            break;
        case 4:
            joinNumbers<4>(line, row);
            break;
        default:
            joinNumbers<8>(line, row);
            break;
    }
    row[stride_ - 1] &= lastByteMask(header_.width, pictureBits_);
}

template <int growth>
void PcxPlanes::joinNumbers(const std::uint8_t* line, std::uint8_t* row) const {
    std::size_t left = stride_;
    for (std::size_t i = 0; left > 0; ++i) {
        std::uint64_t pixels = 0;
        for (int plane = 0; plane < header_.planes; ++plane) {
            pixels |= spread_[line[static_cast<std::size_t>(plane) * header_.bytesPerLine + i]] << plane * header_.bits;
        }
        std::array<std::uint8_t, growth> bytes;
        for (int byte = 0; byte < growth; ++byte) {
            bytes[static_cast<std::size_t>(byte)] = static_cast<std::uint8_t>(pixels >> 8 * (growth - 1 - byte));
        }
        const std::size_t now = std::min<std::size_t>(growth, left);
        std::memcpy(row, bytes.data(), now);
        row += now;
        left -= now;
    }
}

void PcxPlanes::joinColors(const std::uint8_t* line, std::uint8_t* row, bool withAlpha) const {
    const std::uint8_t* const red = line;
    const std::uint8_t* const green = red + header_.bytesPerLine;
    const std::uint8_t* const blue = green + header_.bytesPerLine;
    const int width = header_.width;
    for (int x = 0; x < width; ++x, row += 3) {
        row[0] = red[x];
        row[1] = green[x];
        row[2] = blue[x];
    }
    if (withAlpha) {
        const std::uint8_t* const alpha = blue + header_.bytesPerLine;
        row -= 3 * static_cast<std::ptrdiff_t>(width);
        for (int x = 0; x < width; ++x, row += 3) {
            std::transform(row, row + 3, row, [&](std::uint8_t value) { return onWhite(value, alpha[x]); });
        }
    }
}

void PcxPlanes::split(const std::uint8_t* row, std::uint8_t* line, bool withAlpha) const {
    if (header_.isColors()) {
        splitColors(row, line, withAlpha);
    } else if (pictureBits_ == header_.bits) {
        std::memcpy(line, row, stride_);
        line[stride_ - 1] &= lastByteMask(header_.width, pictureBits_);
        std::memset(line + stride_, 0, header_.bytesPerLine - stride_);
    } else {
        splitNumbers(row, line);
    }
}

void PcxPlanes::splitNumbers(const std::uint8_t* row, std::uint8_t* line) const {
    std::memset(line, 0, header_.lineSize());
    const int pixelsOfByte = 8 / header_.bits;
    const int pixelsOfRowByte = 8 / pictureBits_;
    const int mask = (1 << header_.bits) - 1;
    for (int x = 0; x < header_.width; ++x) {
        const int number = row[x / pixelsOfRowByte] >> (pixelsOfRowByte - 1 - x % pixelsOfRowByte) * pictureBits_;
        const int shift = (pixelsOfByte - 1 - x % pixelsOfByte) * header_.bits;
        std::uint8_t* to = line + x / pixelsOfByte;
        for (int plane = 0; plane < header_.planes; ++plane, to += header_.bytesPerLine) {
            *to = static_cast<std::uint8_t>(*to | (number >> plane * header_.bits & mask) << shift);
        }
    }
}

void PcxPlanes::splitColors(const std::uint8_t* row, std::uint8_t* line, bool withAlpha) const {
    for (int x = 0; x < header_.width; ++x, row += 3) {
        std::uint8_t* const red = line + x;
        std::uint8_t* const green = red + header_.bytesPerLine;
        std::uint8_t* const blue = green + header_.bytesPerLine;
        std::uint8_t* const alpha = blue + header_.bytesPerLine;
        if (withAlpha) {
            if (onWhite(*red, *alpha) == row[0] && onWhite(*green, *alpha) == row[1] &&
                onWhite(*blue, *alpha) == row[2]) {
                continue;
            }
            *alpha = 0xFF;
        }
        *red = row[0];
        *green = row[1];
        *blue = row[2];
    }
}

}  // namespace pictures
