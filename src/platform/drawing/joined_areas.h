// Areas of one colour on the screen that may meet within a pixel.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/drawing/page_area.h"
#include "platform/drawing/screen_pixels.h"

namespace platform::drawing {

// The parts of a pixel that areas fill are added up before it is mixed with its ground: areas that lie side by side
// have no seam between them, and bars are as dark together as on paper.
class JoinedAreas {
public:
    // On a bitmap of this size, the same until they are drawn.
    void add(int width, int height, Reach across, Reach down);

    // Draws all of them and forgets them.
    void draw(const ScreenPixels& pixels, Color color) noexcept;

private:
    int width_ = 0;
    std::vector<std::uint16_t> parts_;  // of each pixel
    Area touched_;
};

}  // namespace platform::drawing
