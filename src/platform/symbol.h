// A small picture of lines, such as stands on the buttons of a tool bar.
#pragma once

#include <vector>

namespace platform {

// Straight lines with round ends, on a square of 16 by 16 units; the middle of a line is at its points.
struct Symbol {
    struct Line {
        double fromX = 0;
        double fromY = 0;
        double toX = 0;
        double toY = 0;
    };
    double thickness = 1.5;
    std::vector<Line> lines;
};

}  // namespace platform
