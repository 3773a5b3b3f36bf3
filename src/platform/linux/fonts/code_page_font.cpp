#include "platform/linux/fonts/code_page_font.h"

#include <algorithm>
#include <utility>

namespace platform_linux::fonts {

namespace {

constexpr int firstPrintable = 32;
constexpr int missingAllowed = 8;

platform::drawing::FontUnits unitsOf(const FontMeasures& measures) {
    platform::drawing::FontUnits units;
    units.perEm = measures.unitsPerEm;
    units.ascent = measures.cellAscent;
    units.descent = measures.cellDescent;
    units.underlineTop = measures.underlineTop;
    units.underlineThickness = measures.underlineThickness;
    return units;
}

}  // namespace

CodePageFont::CodePageFont(FontFile file, const CodePage& codePage)
    : file_(std::move(file)), units_(unitsOf(file_.measures())) {
    const unsigned blank = file_.glyph(U' ');
    int missing = 0;
    for (std::size_t byte = 0; byte < glyphs_.size(); ++byte) {
        const unsigned glyph = file_.glyph(codePage[byte]);
        glyphs_[byte] = glyph != 0 ? glyph : blank;
        units_.advance[byte] = std::max(0, file_.advance(glyphs_[byte]));
        const bool expected = byte >= firstPrintable && codePage[byte] != 0;
        missing += expected && glyph == 0 ? 1 : 0;
    }
    coversCodePage_ = missing <= missingAllowed;
}

}  // namespace platform_linux::fonts
