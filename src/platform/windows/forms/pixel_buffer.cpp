#include "platform/windows/forms/pixel_buffer.h"

namespace platform_windows::forms {

PixelBuffer::PixelBuffer(int width, int height) {
    if (width <= 0 || height <= 0) {
        return;
    }
    constexpr WORD bitsPerPixel = 32;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = bitsPerPixel;
    void* bits = nullptr;
    context_ = gdi::DeviceContext(::CreateCompatibleDC(nullptr));
    bitmap_ = Owner<BitmapKind>(::CreateDIBSection(context_.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap_ && ::SelectObject(context_.get(), bitmap_.get()) != nullptr) {
        width_ = width;
        height_ = height;
        bits_ = static_cast<std::uint32_t*>(bits);
    }
}

platform::drawing::ScreenPixels PixelBuffer::pixels() const {
    ::GdiFlush();
    return {.first = bits_, .width = width_, .height = height_, .stride = width_};
}

void PixelBuffer::copyTo(HDC screen, int x, int y) const {
    ::BitBlt(screen, x, y, width_, height_, context_.get(), 0, 0, SRCCOPY);
}

}  // namespace platform_windows::forms
