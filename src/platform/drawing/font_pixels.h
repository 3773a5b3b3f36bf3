// A font's measures in whole device pixels. They come from the outlines' own units alone, never from what a system
// makes of a size, so a line ends in the same place on every system.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace platform::drawing {

// In units of the outlines.
struct FontUnits {
    int perEm = 1000;
    std::array<int, 256> advance{};  // of each byte of the host's code page, not negative
    int ascent = 0;                  // top of the character cell to the baseline: usWinAscent
    int descent = 0;                 // baseline to the bottom of the cell: usWinDescent
    int underlineTop = 0;            // above the baseline
    int underlineThickness = 0;
};

// Whether characters are as wide and lines as high as those of the usual fixed-pitch screen and printer font of
// Windows, so that one font can stand for the other.
bool hasCourierMetrics(const FontUnits& font);

// What to stretch a font by that has an em square of vertical pixels: 1 but for oblong pixels.
struct TextScale {
    double along = 1;   // the direction of the text
    double across = 1;  // from line to line

    bool operator==(const TextScale&) const = default;
};

struct FontPixels {
    std::array<std::int64_t, 256> advance{};   // of each byte, along the text; what follows is across it
    std::optional<std::int64_t> everyAdvance;  // where all bytes have the same
    std::int64_t ascent = 0;
    std::int64_t descent = 0;
    std::int64_t underlineTop = 0;  // below the baseline
    std::int64_t underlineThickness = 1;

    std::int64_t cellHeight() const { return ascent + descent; }
    std::int64_t widthOf(std::string_view text) const;
};

// A length of half a pixel counts as a whole one. The em square's height is at least 1.
FontPixels fontPixels(const FontUnits& font, int emHeight, TextScale scale);

}  // namespace platform::drawing
