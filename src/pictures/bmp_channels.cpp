#include "pictures/bmp_channels.h"

#include <algorithm>
#include <bit>

#include "pictures/colors.h"
#include "pictures/little_endian.h"
#include "pictures/pixel_rows.h"

namespace pictures {

namespace {

std::uint8_t repeatBits(unsigned value, int width) {
    unsigned result = value << (8 - width);
    for (int filled = width; filled < 8; filled *= 2) {
        result |= result >> filled;
    }
    return static_cast<std::uint8_t>(result);
}

template <int bytes>
std::uint32_t pixelAt(const std::uint8_t* place) {
    std::uint32_t pixel = 0;
    for (int i = 0; i < bytes; ++i) {
        pixel |= std::uint32_t{place[i]} << 8 * i;
    }
    return pixel;
}

template <int bytes>
void putPixel(std::uint8_t* place, std::uint32_t pixel) {
    for (int i = 0; i < bytes; ++i) {
        place[i] = static_cast<std::uint8_t>(pixel >> 8 * i);
    }
}

// Channels of their own, so that writing pixels cannot change them and they stay in registers.
template <bool withAlpha>
struct ColorReader {
    BmpChannel red;
    BmpChannel green;
    BmpChannel blue;
    BmpChannel alpha;

    std::array<std::uint8_t, 3> read(std::uint32_t pixel) const {
        if constexpr (withAlpha) {
            const std::uint8_t opacity = alpha.read(pixel);
            return {onWhite(red.read(pixel), opacity), onWhite(green.read(pixel), opacity),
                    onWhite(blue.read(pixel), opacity)};
        } else {
            return {red.read(pixel), green.read(pixel), blue.read(pixel)};
        }
    }
};

// Bits that are set in some pixel, and in all of them.
struct BitsSeen {
    std::uint32_t any = 0;
    std::uint32_t all = ~std::uint32_t{0};

    template <int bytes>
    void add(const std::uint8_t* place, int count) {
        for (int x = 0; x < count; ++x, place += bytes) {
            const std::uint32_t pixel = pixelAt<bytes>(place);
            any |= pixel;
            all &= pixel;
        }
    }
};

}  // namespace

BmpChannel::BmpChannel(std::uint32_t mask) : mask_(mask) {
    const int width = std::popcount(mask);
    if (width == 0) {
        return;
    }
    const int used = std::min(width, 8);
    shift_ = static_cast<unsigned>(std::countr_zero(mask) + width - used);
    top_ = (1U << used) - 1;
    for (unsigned value = 0; value <= top_; ++value) {
        values_[value] = repeatBits(value, used);
    }
}

std::uint32_t BmpChannel::write(std::uint8_t value) const {
    const int width = std::popcount(mask_);
    if (width < 8) {
        return (value * top_ + 127) / 255 << shift_;
    }
    return value * 0x01010101U >> (32 - width) << std::countr_zero(mask_);
}

BmpColors::BmpColors(const BmpHeader& header, std::string_view content)
    : width_(header.width),
      bitsPerPixel_(header.bitsPerPixel),
      red_(header.masks.red),
      green_(header.masks.green),
      blue_(header.masks.blue),
      alpha_(header.masks.alpha),
      translucent_(findTranslucency(header, content)) {}

bool BmpColors::findTranslucency(const BmpHeader& header, std::string_view content) const {
    BitsSeen seen;
    for (int row = 0; row < header.height && header.masks.alpha != 0; ++row) {
        const std::uint8_t* place =
            pixelsAt(content, header.pixelsAt + static_cast<std::size_t>(row) * header.rowSize());
        header.bitsPerPixel == 16 ? seen.add<2>(place, header.width) : seen.add<4>(place, header.width);
    }
    return (seen.any & alpha_.mask()) != 0 && (seen.all & alpha_.mask()) != alpha_.mask();
}

bool BmpColors::channelsAreBytes() const {
    return bitsPerPixel_ >= 24 && !translucent_ && red_.isByte() && green_.isByte() && blue_.isByte();
}

void BmpColors::decodeBytes(const std::uint8_t* fileRow, std::uint8_t* row) const {
    const std::size_t step = static_cast<std::size_t>(bitsPerPixel_) / 8;
    const std::uint8_t* red = fileRow + red_.byte();
    const std::uint8_t* green = fileRow + green_.byte();
    const std::uint8_t* blue = fileRow + blue_.byte();
    for (const std::uint8_t* const end = row + 3 * static_cast<std::size_t>(width_); row != end; row += 3) {
        row[0] = *red;
        row[1] = *green;
        row[2] = *blue;
        red += step;
        green += step;
        blue += step;
    }
}

void BmpColors::encodeBytes(const std::uint8_t* row, std::uint8_t* fileRow) const {
    const std::size_t step = static_cast<std::size_t>(bitsPerPixel_) / 8;
    std::uint8_t* red = fileRow + red_.byte();
    std::uint8_t* green = fileRow + green_.byte();
    std::uint8_t* blue = fileRow + blue_.byte();
    for (const std::uint8_t* const end = row + 3 * static_cast<std::size_t>(width_); row != end; row += 3) {
        *red = row[0];
        *green = row[1];
        *blue = row[2];
        red += step;
        green += step;
        blue += step;
    }
}

template <int bytes, bool alpha>
void BmpColors::decode(const std::uint8_t* fileRow, std::uint8_t* row) const {
    const ColorReader<alpha> reader{red_, green_, blue_, alpha_};
    for (int x = 0; x < width_; ++x, fileRow += bytes, row += 3) {
        const auto color = reader.read(pixelAt<bytes>(fileRow));
        row[0] = color[0];
        row[1] = color[1];
        row[2] = color[2];
    }
}

template <int bytes>
void BmpColors::encode(const std::uint8_t* row, std::uint8_t* fileRow) const {
    const ColorReader<true> translucent{red_, green_, blue_, alpha_};
    const ColorReader<false> solid{red_, green_, blue_, alpha_};
    const std::uint32_t opaque = translucent_ ? alpha_.mask() : 0;
    const std::uint32_t kept = ~(red_.mask() | green_.mask() | blue_.mask() | opaque);
    for (int x = 0; x < width_; ++x, fileRow += bytes, row += 3) {
        const std::uint32_t pixel = pixelAt<bytes>(fileRow);
        const std::array wanted{row[0], row[1], row[2]};
        if ((translucent_ ? translucent.read(pixel) : solid.read(pixel)) != wanted) {
            putPixel<bytes>(fileRow,
                            (pixel & kept) | opaque | red_.write(row[0]) | green_.write(row[1]) | blue_.write(row[2]));
        }
    }
}

void BmpColors::decodeRow(const std::uint8_t* fileRow, std::uint8_t* row) const {
    if (channelsAreBytes()) {
        decodeBytes(fileRow, row);
    } else if (bitsPerPixel_ == 16) {
        translucent_ ? decode<2, true>(fileRow, row) : decode<2, false>(fileRow, row);
    } else {
        translucent_ ? decode<4, true>(fileRow, row) : decode<4, false>(fileRow, row);
    }
}

void BmpColors::encodeRow(const std::uint8_t* row, std::uint8_t* fileRow) const {
    if (channelsAreBytes()) {
        encodeBytes(row, fileRow);
    } else if (bitsPerPixel_ == 16) {
        encode<2>(row, fileRow);
    } else {
        encode<4>(row, fileRow);
    }
}

}  // namespace pictures
