// Pixels in memory that the system's functions draw on, and the program as well.
#pragma once

#include "platform/windows/gdi/gdi_handles.h"

#include <cstdint>

#include "platform/drawing/screen_pixels.h"

namespace platform_windows::forms {

struct BitmapKind {
    using Handle = HBITMAP;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::DeleteObject(handle); }
};

class PixelBuffer {
public:
    PixelBuffer() = default;
    // Black. None where there is no memory for it, or it has no pixel.
    PixelBuffer(int width, int height);

    explicit operator bool() const { return bits_ != nullptr; }
    int width() const { return width_; }
    int height() const { return height_; }
    HDC context() const { return context_.get(); }

    // What the system was asked to draw so far is there.
    platform::drawing::ScreenPixels pixels() const;

    void copyTo(HDC screen, int x, int y) const;

private:
    int width_ = 0;
    int height_ = 0;
    std::uint32_t* bits_ = nullptr;
    platform_windows::Owner<BitmapKind> bitmap_;
    gdi::DeviceContext context_;  // is given back first, as the bitmap is selected into it
};

}  // namespace platform_windows::forms
