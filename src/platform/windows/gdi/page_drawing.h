// Draws on a device with its state changed only where it has to be.
#pragma once

#include <optional>
#include <vector>

#include "platform/color.h"
#include "platform/windows/gdi/device_bitmap.h"
#include "platform/windows/gdi/font_handles.h"
#include "platform/windows/gdi/system_headers.h"

namespace platform_windows::gdi {

inline COLORREF colorRef(platform::Color color) { return RGB(color.red, color.green, color.blue); }

// The device's font comes back with the end of the page. Every call says whether the system did it, and otherwise
// leaves the reason as the system's last error.
class PageDrawing {
public:
    // Both are borrowed.
    PageDrawing(HDC device, FontHandles& fonts);

    // Each character has its place: the pixels from it to the next.
    bool text(const FontKey& font, COLORREF color, POINT baseline, const std::vector<wchar_t>& characters,
              const std::vector<int>& advances);
    bool rectangle(const RECT& area, COLORREF color);
    bool picture(const DeviceBitmap& bitmap, const Stretch& across, const Stretch& down, bool printable,
                 const StretchPicture& stretchPicture) const {
        return bitmap.draw(device_, across, down, printable, stretchPicture);
    }

private:
    HDC device_;
    FontHandles& handles_;
    Selection stockFont_;
    std::optional<FontKey> font_;
    COLORREF textColor_ = CLR_INVALID;
    Brush brush_;
    COLORREF brushColor_ = CLR_INVALID;
};

}  // namespace platform_windows::gdi
