// A colour as surfaces draw it.
#pragma once

#include <cstdint>

namespace platform {

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const Color&) const = default;
};

}  // namespace platform
