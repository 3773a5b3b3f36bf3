#include "platform/windows/forms/scroll_bars.h"

#include <algorithm>

namespace platform_windows::forms {

namespace {

SCROLLINFO infoOf(HWND window, int bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    ::GetScrollInfo(window, bar, &info);
    return info;
}

int requested(const SCROLLINFO& info, unsigned request) {
    constexpr int linesOnPage = 10;
    const auto page = static_cast<int>(info.nPage);
    const int line = std::max(1, page / linesOnPage);
    switch (request) {
        case SB_LINEUP:
            return info.nPos - line;
        case SB_LINEDOWN:
            return info.nPos + line;
        case SB_PAGEUP:
            return info.nPos - page + line;
        case SB_PAGEDOWN:
            return info.nPos + page - line;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            return info.nTrackPos;
        case SB_TOP:
            return info.nMin;
        case SB_BOTTOM:
            return info.nMax;
        default:
            return info.nPos;
    }
}

}  // namespace

void setScrollBar(HWND window, int bar, const platform::ScrollBar& scroll) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    // A page as large as the whole lets the bar vanish.
    info.nMax = std::max(0, scroll.whole - 1);
    info.nPage = static_cast<UINT>(std::max(1, scroll.page));
    info.nPos = scroll.position;
    ::SetScrollInfo(window, bar, &info, TRUE);
}

int scrollPosition(HWND window, int bar) { return infoOf(window, bar).nPos; }

bool moveScrollBar(HWND window, int bar, unsigned request) {
    SCROLLINFO info = infoOf(window, bar);
    const int before = info.nPos;
    info.fMask = SIF_POS;
    info.nPos = requested(info, request);
    // The system keeps it within its range.
    return ::SetScrollInfo(window, bar, &info, TRUE) != before;
}

}  // namespace platform_windows::forms
