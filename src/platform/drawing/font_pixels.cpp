#include "platform/drawing/font_pixels.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace platform::drawing {

bool hasCourierMetrics(const FontUnits& font) {
    constexpr int firstPrintable = 32;
    const auto is = [&](int value, int of2048) {
        return std::int64_t{value} * 2048 == std::int64_t{of2048} * font.perEm;
    };
    return is(font.ascent, 1705) && is(font.descent, 615) &&
           std::all_of(font.advance.begin() + firstPrintable, font.advance.end(),
                       [&](int advance) { return is(advance, 1229); });
}

std::int64_t FontPixels::widthOf(std::string_view text) const {
    if (everyAdvance) {
        return *everyAdvance * static_cast<std::int64_t>(text.size());
    }
    std::int64_t width = 0;
    for (const char byte : text) {
        width += advance[static_cast<unsigned char>(byte)];
    }
    return width;
}

FontPixels fontPixels(const FontUnits& font, int emHeight, TextScale scale) {
    const double unit = static_cast<double>(emHeight) / font.perEm;
    const auto pixels = [unit](int length, double stretch) {
        return static_cast<std::int64_t>(std::floor(length * unit * stretch + 0.5));
    };
    FontPixels size;
    std::transform(font.advance.begin(), font.advance.end(), size.advance.begin(),
                   [&](int advance) { return pixels(advance, scale.along); });
    const bool same = std::ranges::count(size.advance, size.advance.front()) == std::ssize(size.advance);
    size.everyAdvance = same ? std::optional(size.advance.front()) : std::nullopt;
    size.ascent = pixels(font.ascent, scale.across);
    size.descent = pixels(font.descent, scale.across);
    size.underlineTop = -pixels(font.underlineTop, scale.across);
    size.underlineThickness = std::max<std::int64_t>(1, pixels(font.underlineThickness, scale.across));
    return size;
}

}  // namespace platform::drawing
