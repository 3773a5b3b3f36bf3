// The surface of a page that GDI draws.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/drawing/device_pictures.h"
#include "platform/drawing/pixel_surface.h"
#include "platform/windows/gdi/device_bitmap.h"
#include "platform/windows/gdi/font_handles.h"
#include "platform/windows/gdi/page_drawing.h"
#include "platform/windows/gdi/typefaces.h"
#include "platform/windows/print/print_calls.h"
#include "platform/windows/print/system_headers.h"

namespace platform_windows::print {

// Measures on a device at any time and draws on it while a page is open.
class GdiSurface final : public platform::drawing::PixelSurface {
public:
    // The device must live as long as the surface, or until another one takes its place.
    explicit GdiSurface(HDC device, PrintCalls calls = {});

    // Draws on this device from now on, which has the same fonts; never while a page is open.
    void useDevice(HDC device) noexcept { device_ = device; }

    using PixelSurface::setPage;

    // Takes what the device says of its page.
    void takePage(bool color);

    // The device has begun a page; what is drawn without one goes nowhere.
    void beginPage();

    // The rest of the page will not be drawn.
    void giveUp(DWORD code) noexcept;

    // Returns 0 or the system's error code. What could not be drawn has been tried once more with all that the system
    // can spare; after an error the page is white, as far as the device can do that: half a page could be taken for a
    // whole.
    DWORD endPage();

    // What the device draws for a picture, made once. May fail for lack of memory.
    const std::shared_ptr<const gdi::DeviceBitmap>& prepare(const std::shared_ptr<const platform::Picture>& picture);

private:
    DeviceFont findFont(const platform::FontRequest& font) override;
    void showRun(const Run& run) override;
    void showRectangle(const platform::drawing::Area& area, platform::Color color) override;
    void showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) override;

    template <typename Step>
    void attempt(Step step);
    gdi::FontKey fontKey() const;

    HDC device_;
    PrintCalls calls_;
    gdi::Typefaces typefaces_;
    const gdi::Typeface* typeface_ = nullptr;
    gdi::FontHandles handles_;
    platform::drawing::DevicePictures<std::shared_ptr<const gdi::DeviceBitmap>> bitmaps_;
    std::optional<gdi::PageDrawing> drawing_;
    DWORD failure_ = ERROR_SUCCESS;
    std::vector<wchar_t> run_;  // reused
    std::vector<int> advances_;
};

}  // namespace platform_windows::print
