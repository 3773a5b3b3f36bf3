// One direction of a picture stretched on a page.
#pragma once

#include "platform/drawing/page_area.h"

namespace platform_windows::gdi {

// Some of a picture's pixels in a row, and what they fill: from a place up to, not including, the one that is the
// length away. A negative length mirrors them.
struct Stretch {
    int place = 0;
    int length = 0;
    int first = 0;
    int pixels = 0;
};

// Of a picture that is longer than any sheet, only the pixels that are visible: functions of the system draw nothing
// where length times pixels is beyond the range of int. Other pictures stay whole. Some of it must be visible.
Stretch visibleStretch(const Stretch& whole, platform::drawing::Span sheet);

}  // namespace platform_windows::gdi
