// Arithmetic on colours that every decoder shares.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/picture.h"

namespace pictures {

// A channel of a colour that lies with that opacity (0 to 255) on white.
constexpr std::uint8_t onWhite(std::uint8_t channel, std::uint8_t opacity) {
    return static_cast<std::uint8_t>((channel * opacity + 255 * (255 - opacity) + 127) / 255);
}

constexpr platform::Color onWhite(platform::Color color, std::uint8_t opacity) {
    return {onWhite(color.red, opacity), onWhite(color.green, opacity), onWhite(color.blue, opacity)};
}

// The nearest of eight bits to a channel of sixteen.
constexpr std::uint8_t eightBits(std::uint16_t channel) { return static_cast<std::uint8_t>((channel + 128) / 257); }

// Amounts of ink, 255 the most.
constexpr platform::Color fromInks(std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow, std::uint8_t black) {
    const auto light = [black](std::uint8_t ink) {
        return static_cast<std::uint8_t>(((255 - ink) * (255 - black) + 127) / 255);
    };
    return {light(cyan), light(magenta), light(yellow)};
}

// From black to white in 2 to the power of bits steps.
std::vector<platform::Color> greyPalette(int bits);

// From white to black.
std::vector<platform::Color> reversedGreyPalette(int bits);

}  // namespace pictures
