#include "barcode/layout.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

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

Box common(const Box& first, const Box& second) {
    const std::int64_t left = std::max(first.x, second.x);
    const std::int64_t top = std::max(first.y, second.y);
    const std::int64_t right = std::min(first.x + first.width, second.x + second.width);
    const std::int64_t bottom = std::min(first.y + first.height, second.y + second.height);
    return {left, top, std::max<std::int64_t>(right - left, 0), std::max<std::int64_t>(bottom - top, 0)};
}

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
        return {bars, {0, 0, bars.width, bars.height}, {}};
    }
    const bool above = text.placement == TextPlacement::above;
    const Size total{std::max(bars.width, text.size.width), bars.height + text.gap + text.size.height};
    const std::int64_t barsTop = above ? text.size.height + text.gap : 0;
    const std::int64_t textTop = above ? 0 : bars.height + text.gap;
    return {total,
            {aligned(bars.width, total.width, text.alignment), barsTop, bars.width, bars.height},
            {aligned(text.size.width, total.width, text.alignment), textTop, text.size.width, text.size.height}};
}

Point Turn::onPage(const Point& point) const {
    switch (degrees_) {
        case 90:
            return {corner_.x + point.y, corner_.y + symbol_.width - point.x};
        case 180:
            return {corner_.x + symbol_.width - point.x, corner_.y + symbol_.height - point.y};
        case 270:
            return {corner_.x + symbol_.height - point.y, corner_.y + point.x};
        default:
            return {corner_.x + point.x, corner_.y + point.y};
    }
}

Box Turn::onPage(const Box& box) const {
    const Point begin = onPage(Point{box.x, box.y});
    const Point end = onPage(Point{box.x + box.width, box.y + box.height});
    return {std::min(begin.x, end.x), std::min(begin.y, end.y), std::abs(end.x - begin.x), std::abs(end.y - begin.y)};
}

}  // namespace barcode
