// Glyphs as the screen shows them: how much of each pixel is covered, at a quarter of a pixel's exactness.
#pragma once

#include <QPainterPath>
#include <QTransform>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "platform/linux/fonts/code_page_font.h"

namespace platform_linux::qt {

// The outline of a byte's glyph as the matrix (units of the font to pixels) makes it, about the point that it is drawn
// at.
QPainterPath glyphOutline(const fonts::CodePageFont& font, unsigned char byte, const QTransform& matrix);

// What is made once is kept, up to a limit. No hints: shapes and places are the printer's.
class GlyphMasks {
public:
    struct Mask {
        QRect box;              // from the pixel that holds the point that the glyph is drawn at
        std::size_t start = 0;  // see coverage()
    };
    // A face in one size and direction.
    struct Face {
        const fonts::CodePageFont* font = nullptr;
        std::array<double, 4> matrix{};  // m11, m12, m21, m22 of a QTransform
        bool operator==(const Face&) const = default;
        bool operator<(const Face& other) const { return std::tie(font, matrix) < std::tie(other.font, other.matrix); }
    };

    // Positions within a pixel that are told apart, in each direction.
    static constexpr int phases = 4;

    // The face of the masks that are asked for from now on.
    void select(const Face& face);
    // Places in a pixel count from 0 to phases - 1.
    const Mask& mask(unsigned char byte, int across, int down);
    // Of the mask's pixels, row by row without gaps. Only of those asked for since the masks were last forgotten.
    const std::uint8_t* coverage(const Mask& mask) const { return coverage_.data() + mask.start; }
    // Drops masks where there are too many; those asked for before are gone then.
    void forgetTooMany();

private:
    struct Masks {
        std::vector<std::optional<Mask>> made;
        std::array<std::optional<QPainterPath>, 256> outlines;
    };

    Mask make(const QPainterPath& outline, int across, int down);

    Face face_;
    Masks* selected_ = nullptr;
    std::map<Face, Masks> faces_;
    std::vector<std::uint8_t> coverage_;
};

}  // namespace platform_linux::qt
