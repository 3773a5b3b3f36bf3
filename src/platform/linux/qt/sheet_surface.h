// The surface of a sheet on the screen: what is drawn in the printer's pixels appears reduced or enlarged.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/drawing/screen_surface.h"
#include "platform/linux/fonts/font_catalog.h"
#include "platform/linux/qt/glyph_masks.h"

namespace platform_linux::qt {

// Glyphs keep their exact places, parts of a pixel included, and cover each pixel by the part that they have of it. The
// faces are the PDF's own.
class SheetSurface final : public platform::drawing::ScreenSurface {
public:
    // The code page is asked for with the first font.
    explicit SheetSurface(std::function<fonts::CodePage()> codePage) : codePage_(std::move(codePage)) {}

    // What is drawn from now on, until the sheet's end, appears on this bitmap. It is borrowed.
    void beginSheet(const platform::drawing::ScreenPixels& pixels, const platform::SheetView& view) {
        beginPixels(pixels, view);
    }
    // All that was drawn is on the bitmap. Without a sheet nothing happens.
    void endSheet() noexcept { endPixels(); }

private:
    DeviceFont findFont(const platform::FontRequest& font) override;
    void showRun(const Run& run) override;

    struct Glyph {
        unsigned char byte = 0;
        platform::drawing::Place place;
    };

    platform::drawing::Place onScreen(platform::drawing::Point point) const;
    GlyphMatrix glyphMatrix() const;
    // Of the run, those that may be seen.
    const std::vector<Glyph>& visibleGlyphs(const Run& run, double reach);
    void showOutlines(const std::vector<Glyph>& glyphs, const GlyphMatrix& matrix, std::uint32_t color);
    void showMasks(const std::vector<Glyph>& glyphs, std::uint32_t color);
    void mix(const platform::drawing::Area& box, const std::uint8_t* levels, std::uint32_t color);

    std::function<fonts::CodePage()> codePage_;
    std::optional<fonts::FontCatalog> fonts_;
    const fonts::CodePageFont* font_ = nullptr;
    GlyphMasks masks_;
    std::vector<Glyph> glyphs_;  // reused
};

}  // namespace platform_linux::qt
