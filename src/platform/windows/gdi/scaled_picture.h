// A picture at the size that the screen shows it in.
#pragma once

#include <cstdint>

#include "platform/drawing/page_area.h"
#include "platform/picture.h"
#include "platform/windows/gdi/screen_pixels.h"

namespace platform_windows::gdi {

// Of the whole picture, in pixels of the screen, at least 1.
struct PictureLook {
    std::int64_t width = 1;
    std::int64_t height = 1;
    bool mirroredAcross = false;
    bool mirroredDown = false;
    bool grey = false;

    bool operator==(const PictureLook&) const = default;
};

// Draws these columns and rows of the picture as it looks on the screen; the first of them come to the bitmap's corner.
// Where it is smaller than in its own pixels, these are averaged, so that no line is lost; where it is larger they
// keep their edges.
void drawScaled(const platform::Picture& picture, const PictureLook& look, const platform::drawing::Area& part,
                const ScreenPixels& pixels);

}  // namespace platform_windows::gdi
