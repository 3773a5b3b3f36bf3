// What a device makes of the width and the height that a font is asked for with.
#pragma once

#include "platform/drawing/font_pixels.h"
#include "platform/drawing/page_area.h"
#include "platform/windows/gdi/gdi_handles.h"

namespace platform_windows::gdi {

// A letter as it lies on the page, in pixels. Both 0 where the device does not tell.
struct LetterBox {
    double across = 0;
    double down = 0;

    bool known() const { return across > 0 && down > 0; }
};

// Of the letter H in the font selected, turned as the font is.
LetterBox letterBox(HDC device);

// How wide the system makes the letters of the font selected, against the advance of the letter H that its outlines
// have at this size. A font of no stated width follows the device: of pixels that are not square, printers take the
// wider or narrower letters that look right on paper, bitmaps the ones that would on square pixels.
double ownStretch(HDC device, int advance);

}  // namespace platform_windows::gdi
