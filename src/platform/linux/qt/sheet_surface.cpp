#include "platform/linux/qt/sheet_surface.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform_linux::qt {

namespace {

using platform::drawing::Area;
using platform::drawing::Place;
using platform::drawing::Point;

// Pixels of the em square from which on outlines are filled in place: few of such glyphs fit on a screen.
constexpr double largestMask = 128;

// The pixel of a place, and which part of it.
std::pair<int, int> partOf(double place) {
    const auto parts = static_cast<int>(std::floor(place * GlyphMasks::phases + 0.5));
    const int part = parts & (GlyphMasks::phases - 1);
    return {(parts - part) / GlyphMasks::phases, part};
}

Area boxAt(Point corner, std::int64_t width, std::int64_t height) {
    return {{corner.x, corner.x + width}, {corner.y, corner.y + height}};
}

// The pixels on which an outline is.
Area boxOf(const platform::drawing::Outline& outline, Place place) {
    using platform::drawing::Cover;
    return {Cover({outline.least().x + place.x, outline.most().x + place.x}).pixels(),
            Cover({outline.least().y + place.y, outline.most().y + place.y}).pixels()};
}

}  // namespace

Place SheetSurface::onScreen(Point point) const { return {across()(point.x), down()(point.y)}; }

platform::drawing::PixelSurface::DeviceFont SheetSurface::findFont(const platform::FontRequest& font) {
    if (!fonts_) {
        fonts_.emplace(codePage_());
    }
    const fonts::FontCatalog::Choice& choice = fonts_->choose(font.name, font.bold, font.italic);
    font_ = choice.font;
    return {{choice.name, font_->coversCodePage() ? font.charset : platform::charsetAnsi}, &font_->units()};
}

GlyphMatrix SheetSurface::glyphMatrix() const {
    const double unit = static_cast<double>(std::max(1, font().emHeight)) / font_->units().perEm;
    const auto lengthOf = [&](Point direction, double length) {
        return Place{static_cast<double>(direction.x) * length * across().pixel,
                     static_cast<double>(direction.y) * length * down().pixel};
    };
    return {lengthOf(turn().along(), unit * textScale().along), lengthOf(turn().down(), -unit * textScale().across)};
}

void SheetSurface::showRun(const Run& run) {
    const GlyphMatrix matrix = glyphMatrix();
    const double unit = std::max(std::hypot(matrix.right.x, matrix.right.y), std::hypot(matrix.up.x, matrix.up.y));
    const double em = unit * font_->units().perEm;
    constexpr double widest = 4;  // what reaches farthest from its place, in em squares
    const std::vector<Glyph>& glyphs = visibleGlyphs(run, widest * em);
    if (glyphs.empty()) {
        return;
    }
    finishRectangles();
    const std::uint32_t color = platform::drawing::pixelOf(run.color);
    if (em > largestMask) {
        showOutlines(glyphs, matrix, color);
    } else {
        masks_.select(*font_, matrix);
        showMasks(glyphs, color);
    }
}

const std::vector<SheetSurface::Glyph>& SheetSurface::visibleGlyphs(const Run& run, double reach) {
    glyphs_.clear();
    if (shown().empty()) {
        return glyphs_;
    }
    const auto isNear = [reach](double place, platform::drawing::Span span) {
        return place >= static_cast<double>(span.start) - reach && place <= static_cast<double>(span.end) + reach;
    };
    std::int64_t along = 0;
    for (const char character : run.text) {
        const auto byte = static_cast<unsigned char>(character);
        const Place place = onScreen(turn().toPage(run.start, Point{along, 0}));
        if (byte != ' ' && isNear(place.x, shown().across) && isNear(place.y, shown().down)) {
            glyphs_.push_back({byte, place});
        }
        along += fontPixels().advance[byte];
    }
    return glyphs_;
}

void SheetSurface::showOutlines(const std::vector<Glyph>& glyphs, const GlyphMatrix& matrix, std::uint32_t color) {
    platform::drawing::OutlineCoverage coverage;
    std::vector<std::uint8_t> levels;
    for (const Glyph& glyph : glyphs) {
        const platform::drawing::Outline outline = glyphOutline(*font_, glyph.byte, matrix);
        const Area seen = outline.empty() ? Area{} : intersection(boxOf(outline, glyph.place), shown());
        if (seen.empty()) {
            continue;
        }
        coverage.begin(static_cast<int>(seen.across.end - seen.across.start),
                       static_cast<int>(seen.down.end - seen.down.start));
        coverage.add(outline, {glyph.place.x - static_cast<double>(seen.across.start),
                               glyph.place.y - static_cast<double>(seen.down.start)});
        levels.clear();
        coverage.appendTo(levels);
        mix(seen, levels.data(), color);
    }
}

void SheetSurface::showMasks(const std::vector<Glyph>& glyphs, std::uint32_t color) {
    for (const Glyph& glyph : glyphs) {
        const auto [pixelX, partX] = partOf(glyph.place.x);
        const auto [pixelY, partY] = partOf(glyph.place.y);
        const GlyphMask& mask = masks_.mask(glyph.byte, partX, partY);
        mix(boxAt({pixelX + mask.left, pixelY + mask.top}, mask.width, mask.height), masks_.levels(mask), color);
    }
}

void SheetSurface::mix(const Area& box, const std::uint8_t* levels, std::uint32_t color) {
    const Area seen = intersection(box, shown());
    const std::int64_t width = box.across.end - box.across.start;
    for (std::int64_t y = seen.down.start; y < seen.down.end; ++y) {
        const std::uint8_t* level = levels + (y - box.down.start) * width + (seen.across.start - box.across.start);
        std::uint32_t* pixel = pixels().row(y) + seen.across.start;
        for (std::int64_t x = seen.across.start; x < seen.across.end; ++x, ++pixel, ++level) {
            if (*level != 0) {
                *pixel = platform::drawing::mixed(*pixel, color, platform::drawing::shareOf(*level));
            }
        }
    }
}

}  // namespace platform_linux::qt
