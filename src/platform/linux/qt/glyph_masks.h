// Glyphs as the screen shows them: how much of each pixel is covered, at a quarter of a pixel's exactness.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "platform/drawing/outline_coverage.h"
#include "platform/linux/fonts/code_page_font.h"

namespace platform_linux::qt {

// From units of the font, y upwards, to pixels.
struct GlyphMatrix {
    platform::drawing::Place right;  // where a unit to the right leads to
    platform::drawing::Place up;
};

// The outline of a byte's glyph about the point that it is drawn at.
platform::drawing::Outline glyphOutline(const fonts::CodePageFont& font, unsigned char byte, const GlyphMatrix& matrix);

struct GlyphMask {
    int left = 0;  // from the pixel that holds the point that the glyph is drawn at
    int top = 0;
    int width = 0;
    int height = 0;
    std::size_t start = 0;  // of its levels, row by row without gaps
};

// What is made once is kept, up to a limit. No hints: shapes and places are the printer's.
class GlyphMasks {
public:
    // Positions within a pixel that are told apart, in each direction.
    static constexpr int phases = 4;

    // The face of the masks that are asked for from now on, in one size and direction. Those asked for before may be
    // gone.
    void select(const fonts::CodePageFont& font, const GlyphMatrix& matrix);
    // Places in a pixel count from 0 to phases - 1.
    const GlyphMask& mask(unsigned char byte, int across, int down);
    // Up to 255.
    const std::uint8_t* levels(const GlyphMask& mask) const { return levels_.data() + mask.start; }

private:
    using Face = std::tuple<const fonts::CodePageFont*, double, double, double, double>;
    struct Masks {
        std::array<std::optional<platform::drawing::Outline>, 256> outlines;
        std::array<std::array<std::array<std::optional<GlyphMask>, phases>, phases>, 256> made;
    };

    void forgetTooMany();
    GlyphMask make(const platform::drawing::Outline& outline, int across, int down);

    const fonts::CodePageFont* font_ = nullptr;
    GlyphMatrix matrix_;
    Masks* selected_ = nullptr;
    std::map<Face, Masks> faces_;
    platform::drawing::OutlineCoverage coverage_;
    std::vector<std::uint8_t> levels_;
};

}  // namespace platform_linux::qt
