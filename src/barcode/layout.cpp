#include "barcode/layout.h"

#include <algorithm>
#include <cmath>

namespace barcode {

namespace {

// Wider than any sheet; narrow elements beyond it are off the page all the same.
constexpr double widest = 1e6;

std::int64_t aligned(std::int64_t length, std::int64_t total, TextAlignment alignment) {
    switch (alignment) {
        case TextAlignment::left:
            return 0;
        case TextAlignment::right:
            return total - length;
        default:
            return (total - length) / 2;
    }
}

}  // namespace

std::int64_t narrowWidth(double sixHundredths, int pixelsPerInch) {
    const double pixels = sixHundredths * pixelsPerInch / 600;
    return pixels >= 1 ? std::llround(std::min(pixels, widest)) : 1;
}

ElementWidths::ElementWidths(std::int64_t narrow, double ratio) : widths_{narrow} {
    for (std::size_t digit = 2; digit <= widths_.size(); ++digit) {
        widths_[digit - 1] = std::llround(static_cast<double>(digit) * ratio * static_cast<double>(narrow));
    }
}

std::int64_t ElementWidths::sum(std::string_view elements) const {
    std::int64_t pixels = 0;
    for (const char digit : elements) {
        pixels += of(digit);
    }
    return pixels;
}

Layout layOut(const Size& bars, const TextPlace& text) {
    if (text.placement == TextPlacement::none) {
        return {bars, {{0, bars.width}, {0, bars.height}}, {}};
    }
    const bool above = text.placement == TextPlacement::above;
    const Size total{std::max(bars.width, text.size.width), bars.height + text.gap + text.size.height};
    const auto placed = [&](const Size& size, std::int64_t top) {
        const std::int64_t left = aligned(size.width, total.width, text.alignment);
        return platform::drawing::Area{{left, left + size.width}, {top, top + size.height}};
    };
    return {total, placed(bars, above ? text.size.height + text.gap : 0),
            placed(text.size, above ? 0 : bars.height + text.gap)};
}

platform::drawing::Point originOnPage(platform::drawing::Turn turn, platform::drawing::Point corner,
                                      const Size& symbol) {
    const platform::drawing::Area box = turn.toPage({}, platform::drawing::Area{{0, symbol.width}, {0, symbol.height}});
    return {corner.x - box.across.start, corner.y - box.down.start};
}

}  // namespace barcode
