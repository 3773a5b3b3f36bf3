// A font of a document: single-byte, its encoding the host's code page (ISO 32000-1, 9.6).
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/drawing/font_pixels.h"
#include "platform/linux/fonts/code_page_font.h"
#include "platform/linux/pdf/font_size.h"
#include "platform/linux/pdf/font_subset.h"
#include "platform/linux/pdf/object_writer.h"

namespace platform_linux::pdf {

class EmbeddedFont {
public:
    // Font and code page are borrowed; the resource is its number among those of the document.
    EmbeddedFont(const fonts::CodePageFont& font, const fonts::CodePage& codePage, int resource);

    const fonts::CodePageFont& face() const noexcept { return font_; }

    // The font with an em square of that many pixels, at least 1, and what that comes to in pixels.
    FontSize atSize(int em, platform::drawing::TextScale scale, const platform::drawing::FontPixels& pixels) const;

    // Notes that these bytes appear on a page.
    void use(std::string_view bytes);
    bool used() const noexcept { return anyUsed_; }

    // Why a document for the archive may not show what was used; empty where it may.
    std::string flaw() const;

    // Writes the font as far as it was used; returns the number of its object.
    int write(ObjectWriter& writer) const;

private:
    std::string baseName() const;
    int writeProgram(ObjectWriter& writer) const;
    int writeDescriptor(ObjectWriter& writer) const;
    int writeUnicodeMap(ObjectWriter& writer) const;
    char32_t characterOf(std::size_t byte) const;
    int perMille(double units) const;

    const fonts::CodePageFont& font_;
    const fonts::CodePage& codePage_;
    int resource_;
    std::array<int, 256> widths_{};  // thousandths of the em
    std::array<bool, 256> used_{};
    bool anyUsed_ = false;
};

}  // namespace platform_linux::pdf
