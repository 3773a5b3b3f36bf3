// How much of each pixel an outline covers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform::drawing {

// In pixels, y downwards.
struct Place {
    double x = 0;
    double y = 0;
};

// Straight edges of closed contours.
class Outline {
public:
    struct Edge {
        Place from;
        Place to;
    };

    void moveTo(Place place);
    void lineTo(Place place);
    // Quadratic; becomes straight lines that nobody can tell from it.
    void curveTo(Place control, Place place);
    void close() { lineTo(start_); }

    const std::vector<Edge>& edges() const { return edges_; }
    bool empty() const { return edges_.empty(); }
    // The corners of all of it; only where there is some.
    Place least() const { return least_; }
    Place most() const { return most_; }

private:
    std::vector<Edge> edges_;
    Place start_;
    Place place_;
    Place least_;
    Place most_;
};

// Exact: for each edge, the area to its right is added up in each pixel. What contours go round is filled, more than
// once or in whatever direction; where contours of opposite directions lie one inside the other, there is a hole.
class OutlineCoverage {
public:
    // Of a picture of so many pixels, none of them covered.
    void begin(int width, int height);
    // The outline's origin comes to this place of the picture; what of it is outside is left out.
    void add(const Outline& outline, Place origin);
    // Up to 255, row by row without gaps, appended.
    void appendTo(std::vector<std::uint8_t>& levels) const;

private:
    void addEdge(Place from, Place to);
    void addRow(float* row, double left, double right, double height) const;

    int width_ = 0;
    int height_ = 0;
    std::vector<float> changes_;  // from one pixel to the next, two more a row than there are pixels
};

}  // namespace platform::drawing
