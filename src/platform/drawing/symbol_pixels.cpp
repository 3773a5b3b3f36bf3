#include "platform/drawing/symbol_pixels.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace platform::drawing {

namespace {

constexpr double units = 16;
constexpr double opaque = 255;

// Places along one axis: those of lines that run across it are moved so that their edges come between pixels, and so
// is every other point with the same place, so that what is joined stays joined.
class Grid {
public:
    Grid(double scale, double thickness) : scale_(scale), thickness_(thickness) {}

    void add(double from, double to) {
        if (from == to) {
            edges_.insert(from);
        }
    }
    double pixel(double place) const {
        const double pixel = place * scale_;
        return edges_.contains(place) ? std::round(pixel - thickness_ / 2) + thickness_ / 2 : pixel;
    }

private:
    double scale_;
    double thickness_;
    std::set<double> edges_;
};

double distance(double x, double y, const Symbol::Line& line) {
    const double across = line.toX - line.fromX;
    const double down = line.toY - line.fromY;
    const double square = across * across + down * down;
    const double along = square > 0 ? ((x - line.fromX) * across + (y - line.fromY) * down) / square : 0;
    const double nearest = std::clamp(along, 0.0, 1.0);
    return std::hypot(x - line.fromX - nearest * across, y - line.fromY - nearest * down);
}

std::vector<Symbol::Line> linesInPixels(const Symbol& symbol, double scale, double thickness) {
    Grid across(scale, thickness);
    Grid down(scale, thickness);
    for (const Symbol::Line& line : symbol.lines) {
        across.add(line.fromX, line.toX);
        down.add(line.fromY, line.toY);
    }
    std::vector<Symbol::Line> lines;
    lines.reserve(symbol.lines.size());
    for (const Symbol::Line& line : symbol.lines) {
        lines.push_back(
            {across.pixel(line.fromX), down.pixel(line.fromY), across.pixel(line.toX), down.pixel(line.toY)});
    }
    return lines;
}

}  // namespace

std::vector<std::uint8_t> symbolPixels(const Symbol& symbol, int size) {
    constexpr double middle = 0.5;
    const int side = std::max(size, 0);
    const double scale = side / units;
    // Half a pixel more would blur every line; a thinner line is the better one.
    const double thickness = std::max(1.0, std::ceil(symbol.thickness * scale - middle));
    const std::vector<Symbol::Line> lines = linesInPixels(symbol, scale, thickness);
    std::vector<std::uint8_t> opacity;
    opacity.reserve(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            double covered = 0;
            for (const Symbol::Line& line : lines) {
                covered = std::max(covered, thickness / 2 + middle - distance(column + middle, row + middle, line));
            }
            opacity.push_back(static_cast<std::uint8_t>(std::lround(opaque * std::min(covered, 1.0))));
        }
    }
    return opacity;
}

}  // namespace platform::drawing
