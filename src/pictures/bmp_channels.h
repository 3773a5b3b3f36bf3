// Pixels of BMP files that are colours themselves: 16, 24 and 32 bits.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "pictures/bmp_header.h"

namespace pictures {

// The bits of a pixel that one mask marks, as a value from 0 to 255. Narrow channels repeat their bits, as GDI does, so
// that the opposite of a value is the value of the opposite bits; wide ones give their upper eight.
class BmpChannel {
public:
    explicit BmpChannel(std::uint32_t mask);

    std::uint8_t read(std::uint32_t pixel) const { return values_[pixel >> shift_ & top_]; }
    // The bits, in their place, that read as the value, or as near to it as the channel comes.
    std::uint32_t write(std::uint8_t value) const;
    std::uint32_t mask() const { return mask_; }
    // Of a channel that is a whole byte: which of the pixel's it is.
    std::size_t byte() const { return shift_ / 8; }
    bool isByte() const { return top_ == 0xFF && shift_ % 8 == 0 && mask_ >> shift_ == 0xFF; }

private:
    std::uint32_t mask_;
    unsigned shift_ = 0;     // of the bits that are read
    std::uint32_t top_ = 0;  // the largest number of those bits
    std::array<std::uint8_t, 256> values_{};
};

// Turns rows of a file into rows of red, green and blue, and back.
class BmpColors {
public:
    // Alpha that is 0 in every pixel was forgotten by the program that wrote the file: the picture is opaque, as it is
    // where alpha is full everywhere.
    BmpColors(const BmpHeader& header, std::string_view content);

    void decodeRow(const std::uint8_t* fileRow, std::uint8_t* row) const;
    // Replaces the colours of a row of the file. A pixel that has its colour already stays as it is, bit by bit;
    // another one keeps the bits of no channel and becomes opaque, as a translucent one could not be dark on white
    // paper.
    void encodeRow(const std::uint8_t* row, std::uint8_t* fileRow) const;

private:
    bool findTranslucency(const BmpHeader& header, std::string_view content) const;
    bool channelsAreBytes() const;
    void decodeBytes(const std::uint8_t* fileRow, std::uint8_t* row) const;
    void encodeBytes(const std::uint8_t* row, std::uint8_t* fileRow) const;
    template <int bytes, bool alpha>
    void decode(const std::uint8_t* fileRow, std::uint8_t* row) const;
    template <int bytes>
    void encode(const std::uint8_t* row, std::uint8_t* fileRow) const;

    int width_;
    int bitsPerPixel_;
    BmpChannel red_;
    BmpChannel green_;
    BmpChannel blue_;
    BmpChannel alpha_;
    bool translucent_;
};

}  // namespace pictures
