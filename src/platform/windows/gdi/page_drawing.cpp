#include "platform/windows/gdi/page_drawing.h"

namespace platform_windows::gdi {

PageDrawing::PageDrawing(HDC device, FontHandles& fonts)
    : device_(device), handles_(fonts), stockFont_(device, ::GetStockObject(DEVICE_DEFAULT_FONT)) {
    ::SetBkMode(device, TRANSPARENT);
    ::SetTextAlign(device, TA_BASELINE);
}

bool PageDrawing::text(const FontKey& font, COLORREF color, POINT baseline, const std::vector<wchar_t>& characters,
                       const std::vector<int>& advances) {
    if (font_ != font) {
        HFONT handle = handles_.get(device_, font);
        if (handle == nullptr || ::SelectObject(device_, handle) == nullptr) {
            return false;
        }
        font_ = font;
    }
    if (textColor_ != color) {
        ::SetTextColor(device_, color);
        textColor_ = color;
    }
    return ::ExtTextOutW(device_, baseline.x, baseline.y, 0, nullptr, characters.data(),
                         static_cast<UINT>(characters.size()), advances.data()) != FALSE;
}

bool PageDrawing::rectangle(const RECT& area, COLORREF color) {
    if (brushColor_ != color) {
        brush_ = Brush(::CreateSolidBrush(color));
        brushColor_ = color;
    }
    return brush_ && ::FillRect(device_, &area, brush_.get()) != 0;
}

}  // namespace platform_windows::gdi
