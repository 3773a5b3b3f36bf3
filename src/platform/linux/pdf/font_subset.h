// Font programs for embedding: TrueType fonts that hold a few glyphs only, found by single bytes.
#pragma once

#include <string>

#include "platform/linux/fonts/code_page_font.h"

namespace platform_linux::pdf {

// A font program with the glyphs given, in which bytes lead straight to their glyphs, in both of the ways that readers
// of symbolic fonts look for (ISO 32000-1, 9.6.6.4). A byte without a glyph shows nothing. Throws runtime::Error
// (errPrinter), the font's name in the detail, for a font file that cannot be taken apart.
std::string fontSubset(const fonts::FontFile& font, const fonts::ByteGlyphs& glyphs);

}  // namespace platform_linux::pdf
