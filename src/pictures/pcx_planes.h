// Lines of PCX files as rows of pixels, and back.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "pictures/pcx_header.h"

namespace pictures {

class PcxPlanes {
public:
    explicit PcxPlanes(const PcxHeader& header);

    // A line, all planes one behind the other, as a row of a picture.
    void join(const std::uint8_t* line, std::uint8_t* row, bool withAlpha) const;
    // Replaces a line's pixels by those of a row. Bits that no pixel has become 0. With alpha a pixel that has its
    // colour already stays as it is, and another one becomes opaque.
    void split(const std::uint8_t* row, std::uint8_t* line, bool withAlpha) const;

private:
    template <int growth>
    void joinNumbers(const std::uint8_t* line, std::uint8_t* row) const;
    void joinColors(const std::uint8_t* line, std::uint8_t* row, bool withAlpha) const;
    void splitNumbers(const std::uint8_t* row, std::uint8_t* line) const;
    void splitColors(const std::uint8_t* row, std::uint8_t* line, bool withAlpha) const;

    PcxHeader header_;
    int pictureBits_;
    std::size_t stride_;
    // The pixels of one plane's byte, each in as many bits as the picture has.
    std::array<std::uint64_t, 256> spread_{};
};

}  // namespace pictures
