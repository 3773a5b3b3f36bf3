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

gdi::ScreenPixels PixelBuffer::pixels() const {
    ::GdiFlush();
    return {.first = bits_, .width = width_, .height = height_, .stride = width_};
}

void PixelBuffer::copyTo(HDC screen, int x, int y) const {
    ::BitBlt(screen, x, y, width_, height_, context_.get(), 0, 0, SRCCOPY);
}

std::uint32_t blended(std::uint32_t below, std::uint32_t color, unsigned opacity) {
    constexpr unsigned opaque = 255;
    std::uint32_t result = 0;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const std::uint32_t part = ((((color >> shift) & opaque) * opacity) +
                                    (((below >> shift) & opaque) * (opaque - opacity)) + opaque / 2) /
                                   opaque;
        result |= part << shift;
    }
    return result;
}

}  // namespace platform_windows::forms
