// A TrueType font file: its characters and measures.
#pragma once

#include <hb.h>

#include <optional>
#include <string>

#include "platform/linux/fonts/scoped.h"

namespace platform_linux::fonts {

// In units of the font, y upwards from the baseline, unless said otherwise.
struct FontMeasures {
    int unitsPerEm = 1000;
    int cellAscent = 0;   // of the character cell: usWinAscent
    int cellDescent = 0;  // downwards: usWinDescent
    int lineAscent = 0;   // of the hhea table
    int lineDescent = 0;  // of the hhea table, negative below the baseline
    int capHeight = 0;
    int weight = 400;
    int underlineTop = 0;
    int underlineThickness = 0;
    double italicAngle = 0;  // degrees, counter-clockwise
    int left = 0;            // of the box round all glyphs
    int bottom = 0;
    int right = 0;
    int top = 0;
};

// Takes the closed contours of an outline, in units of the font, y upwards; what they go round is filled (non-zero
// winding rule).
class OutlinePen {
public:
    virtual ~OutlinePen() = default;

    virtual void moveTo(double x, double y) = 0;
    virtual void lineTo(double x, double y) = 0;
    // Quadratic.
    virtual void curveTo(double controlX, double controlY, double x, double y) = 0;
    virtual void close() = 0;
};

class FontFile {
public:
    // Nothing where the file cannot be read or holds no TrueType outlines. The file is mapped, not read.
    static std::optional<FontFile> open(const std::string& path, int index);

    const FontMeasures& measures() const noexcept { return measures_; }
    // The glyph of a character; 0 where the font has none.
    unsigned glyph(char32_t character) const;
    int advance(unsigned glyph) const;
    void outline(unsigned glyph, OutlinePen& pen) const;
    // Whether its maker allows parts of it in files that anybody may read, as "fsType" of the OpenType table OS/2 says.
    bool mayBeEmbedded() const;
    // The font's PostScript name, letters, digits and hyphens only; "Font" where it has none.
    std::string postScriptName() const;

    hb_face_t* face() const noexcept { return face_.get(); }

private:
    FontFile() = default;

    Scoped<hb_face_t, hb_face_destroy> face_;
    Scoped<hb_font_t, hb_font_destroy> font_;
    FontMeasures measures_;
};

}  // namespace platform_linux::fonts
