// A face as the bytes of the host's code page see it.
#pragma once

#include <array>

#include "platform/drawing/font_pixels.h"
#include "platform/linux/fonts/font_file.h"

namespace platform_linux::fonts {

// The character of each byte; 0 for none.
using CodePage = std::array<char32_t, 256>;

// The glyph that each byte shows; 0 for none, and nothing is shown.
using ByteGlyphs = std::array<unsigned, 256>;

class CodePageFont {
public:
    CodePageFont(FontFile file, const CodePage& codePage);

    const FontFile& file() const noexcept { return file_; }
    // A byte without a glyph of its own has the blank's.
    const ByteGlyphs& glyphs() const noexcept { return glyphs_; }
    const platform::drawing::FontUnits& units() const noexcept { return units_; }

    // Whether it has the characters of the code page; a few may be missing, control codes are not looked at.
    bool coversCodePage() const noexcept { return coversCodePage_; }

private:
    FontFile file_;
    platform::drawing::FontUnits units_;
    ByteGlyphs glyphs_{};
    bool coversCodePage_ = false;
};

}  // namespace platform_linux::fonts
