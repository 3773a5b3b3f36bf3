#include "platform/drawing/outline_coverage.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform::drawing {

namespace {

Place between(Place one, Place other, double part) {
    return {one.x + (other.x - one.x) * part, one.y + (other.y - one.y) * part};
}

}  // namespace

void Outline::moveTo(Place place) {
    start_ = place;
    place_ = place;
}

void Outline::lineTo(Place place) {
    if (edges_.empty()) {
        least_ = place_;
        most_ = place_;
    }
    least_ = {std::min(least_.x, place.x), std::min(least_.y, place.y)};
    most_ = {std::max(most_.x, place.x), std::max(most_.y, place.y)};
    edges_.push_back({place_, place});
    place_ = place;
}

void Outline::curveTo(Place control, Place place) {
    constexpr double tolerance = 0.02;
    constexpr double mostLines = 100;
    const double bend =
        std::hypot(place_.x - 2 * control.x + place.x, place_.y - 2 * control.y + place.y) / (4 * tolerance);
    const auto lines = static_cast<int>(std::clamp(std::ceil(std::sqrt(bend)), 1.0, mostLines));
    const Place from = place_;
    for (int line = 1; line <= lines; ++line) {
        const double part = static_cast<double>(line) / lines;
        lineTo(between(between(from, control, part), between(control, place, part), part));
    }
}

void OutlineCoverage::begin(int width, int height) {
    width_ = width;
    height_ = height;
    changes_.assign((static_cast<std::size_t>(width) + 2) * static_cast<std::size_t>(height), 0);
}

// What is beside the picture has its effect at the picture's edge, so lines are cut there.
void OutlineCoverage::add(const Outline& outline, Place origin) {
    for (const Outline::Edge& edge : outline.edges()) {
        Place from{edge.from.x + origin.x, edge.from.y + origin.y};
        const Place to{edge.to.x + origin.x, edge.to.y + origin.y};
        const double right = width_;
        for (const double side : {from.x < to.x ? 0 : right, from.x < to.x ? right : 0}) {
            if ((from.x < side) != (to.x < side)) {
                const Place cut = between(from, to, (side - from.x) / (to.x - from.x));
                addEdge(from, cut);
                from = cut;
            }
        }
        addEdge(from, to);
    }
}

void OutlineCoverage::addEdge(Place from, Place to) {
    if (from.y == to.y) {
        return;
    }
    const double direction = from.y < to.y ? 1 : -1;
    if (direction < 0) {
        std::swap(from, to);
    }
    const auto rowAt = [this](double y) { return static_cast<int>(std::clamp<double>(y, 0, height_)); };
    const int first = rowAt(std::floor(from.y));
    const int end = rowAt(std::ceil(to.y));
    const double slope = (to.x - from.x) / (to.y - from.y);
    for (int y = first; y < end; ++y) {
        const double top = std::max<double>(from.y, y);
        const double bottom = std::min<double>(to.y, y + 1);
        const auto inside = [&](double place) {
            return std::clamp<double>(from.x + (place - from.y) * slope, 0, width_);
        };
        const double one = inside(top);
        const double other = inside(bottom);
        float* const row = changes_.data() + static_cast<std::ptrdiff_t>(y) * (width_ + 2);
        addRow(row, std::min(one, other), std::max(one, other), (bottom - top) * direction);
    }
}

// An edge of this height within the row, going from the left to the right.
void OutlineCoverage::addRow(float* row, double left, double right, double height) const {
    const auto first = static_cast<int>(left);
    if (right <= first + 1) {
        const double covered = height * (first + 1 - (left + right) / 2);
        row[first] += static_cast<float>(covered);
        row[first + 1] += static_cast<float>(height - covered);
        return;
    }
    double before = 0;
    int pixel = first;
    for (; pixel < right; ++pixel) {
        const double start = std::max<double>(pixel, left);
        const double end = std::min<double>(pixel + 1, right);
        const double middle = (start + end) / 2;
        const double covered =
            height * ((end - start) * (middle - left) + (pixel + 1 - end) * (end - left)) / (right - left);
        row[pixel] += static_cast<float>(covered - before);
        before = covered;
    }
    row[pixel] += static_cast<float>(height - before);
}

void OutlineCoverage::appendTo(std::vector<std::uint8_t>& levels) const {
    constexpr float opaque = 255;
    constexpr float half = 0.5F;
    const float* change = changes_.data();
    for (int y = 0; y < height_; ++y, change += 2) {
        float covered = 0;
        for (int x = 0; x < width_; ++x) {
            covered += *change++;
            levels.push_back(static_cast<std::uint8_t>(std::min(std::abs(covered), 1.0F) * opaque + half));
        }
    }
}

}  // namespace platform::drawing
