#include "platform/windows/forms/form_layout.h"

#include <algorithm>

#include "platform/windows/forms/form_frame.h"

namespace platform_windows::forms {

FormLayout::FormLayout(HWND form, int width, int height) : form_(form) {
    RECT room{0, 0, width, height};
    ::MapDialogRect(form, &room);
    designed_ = {room.right, room.bottom};
}

void FormLayout::add(HWND window, const platform::Control& control) {
    if (control.sizing == platform::Sizing::fixed) {
        return;
    }
    const platform::Place& place = control.place;
    RECT designed{place.x, place.y, place.x + place.width, place.y + place.height};
    ::MapDialogRect(form_, &designed);
    moving_.push_back({window, designed, control.sizing});
}

void FormLayout::arrange() const {
    RECT room{};
    ::GetClientRect(form_, &room);
    const LONG wider = room.right - designed_.cx;
    const LONG higher = room.bottom - designed_.cy;
    HDWP all = ::BeginDeferWindowPos(static_cast<int>(moving_.size()));
    for (const Moving& part : moving_) {
        const bool fills = part.sizing == platform::Sizing::fill;
        const bool grows = part.sizing != platform::Sizing::bottom;
        const RECT& from = part.designed;
        const LONG top = from.top + (fills ? 0 : higher);
        const LONG width = std::max(0L, from.right - from.left + (grows ? wider : 0));
        const LONG height = std::max(0L, from.bottom - from.top + (fills ? higher : 0));
        if (all != nullptr) {
            all = ::DeferWindowPos(all, part.window, nullptr, from.left, top, width, height,
                                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
        }
    }
    if (all != nullptr) {
        ::EndDeferWindowPos(all);
    }
}

SIZE FormLayout::least() const {
    const SIZE frame = frameSize(form_);
    const RECT screen = roomOfScreen(form_);
    return {std::min(designed_.cx + frame.cx, screen.right - screen.left),
            std::min(designed_.cy + frame.cy, screen.bottom - screen.top)};
}

}  // namespace platform_windows::forms
