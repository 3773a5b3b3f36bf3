// A picture at the size that the screen shows it in.
#pragma once

#include "platform/drawing/page_area.h"
#include "platform/drawing/screen_pixels.h"
#include "platform/picture.h"

namespace platform::drawing {

struct PictureLook {
    Reach across;  // of the whole picture, in pixels of the screen
    Reach down;
    bool mirroredAcross = false;
    bool mirroredDown = false;
    bool grey = false;

    bool operator==(const PictureLook&) const = default;
};

// Draws these pixels of the screen, which the picture covers at least in part; the first of them comes to the bitmap's
// corner. Each is the mean of all of the picture that it shows: so no line is lost where a picture becomes smaller, and
// its pixels keep their edges where it becomes larger.
void drawScaled(const Picture& picture, const PictureLook& look, const Area& part, const ScreenPixels& pixels);

}  // namespace platform::drawing
