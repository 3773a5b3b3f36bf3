// Points and areas of a page in device pixels, x to the right, y downwards, and text turned on it.
#pragma once

#include <algorithm>
#include <cstdint>

#include "platform/surface.h"

namespace platform::drawing {

struct Point {
    std::int64_t x = 0;
    std::int64_t y = 0;

    bool operator==(const Point&) const = default;
};

struct Span {
    std::int64_t start = 0;
    std::int64_t end = 0;  // not included

    bool empty() const { return start >= end; }
};

struct Area {
    Span across;
    Span down;

    bool empty() const { return across.empty() || down.empty(); }
};

// The area with these two corners opposite each other.
inline Area areaBetween(Point one, Point other) {
    const auto span = [](std::int64_t from, std::int64_t to) { return Span{std::min(from, to), std::max(from, to)}; };
    return {span(one.x, other.x), span(one.y, other.y)};
}

inline Area intersection(const Area& one, const Area& other) {
    const auto common = [](Span a, Span b) { return Span{std::max(a.start, b.start), std::min(a.end, b.end)}; };
    return {common(one.across, other.across), common(one.down, other.down)};
}

// The smallest area that contains both.
inline Area bounds(const Area& one, const Area& other) {
    const auto both = [](Span a, Span b) { return Span{std::min(a.start, b.start), std::max(a.end, b.end)}; };
    return {both(one.across, other.across), both(one.down, other.down)};
}

// All of the sheet, the unprintable margins included.
inline Area sheetOf(const DeviceCapabilities& device) {
    const auto span = [](std::int64_t offset, std::int64_t length) { return Span{-offset, length - offset}; };
    return {span(device.physicalOffsetX, device.physicalWidth), span(device.physicalOffsetY, device.physicalHeight)};
}

// Text coordinates: x along the text from where it is drawn at, y from the top of its cell to the next line.
class Turn {
public:
    Turn() = default;
    // Degrees counter-clockwise: 0, 90, 180 or 270.
    explicit Turn(int rotation) : quarters_((rotation / 90) & 3) {}

    int degrees() const { return quarters_ * 90; }
    bool turned() const { return quarters_ != 0; }
    // Whether the text runs up or down the page.
    bool upright() const { return (quarters_ & 1) != 0; }

    // One pixel along the text, seen on the page.
    Point along() const {
        switch (quarters_) {
            case 1:
                return {0, -1};
            case 2:
                return {-1, 0};
            case 3:
                return {0, 1};
            default:
                return {1, 0};
        }
    }
    // One pixel towards the next line.
    Point down() const { return {-along().y, along().x}; }

    Point toPage(Point origin, Point text) const {
        return {origin.x + text.x * along().x + text.y * down().x, origin.y + text.x * along().y + text.y * down().y};
    }
    Area toPage(Point origin, const Area& text) const {
        return areaBetween(toPage(origin, Point{text.across.start, text.down.start}),
                           toPage(origin, Point{text.across.end, text.down.end}));
    }
    Area toText(Point origin, const Area& page) const {
        const auto seen = [&](Point point) {
            const Point away{point.x - origin.x, point.y - origin.y};
            return Point{away.x * along().x + away.y * along().y, away.x * down().x + away.y * down().y};
        };
        return areaBetween(seen({page.across.start, page.down.start}), seen({page.across.end, page.down.end}));
    }

    bool operator==(const Turn&) const = default;

private:
    int quarters_ = 0;
};

}  // namespace platform::drawing
