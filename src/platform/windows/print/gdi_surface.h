// The surface of a page that GDI draws.
#pragma once

#include <list>
#include <memory>
#include <optional>
#include <vector>

#include "platform/drawing/device_pictures.h"
#include "platform/drawing/pixel_surface.h"
#include "platform/windows/print/device_bitmap.h"
#include "platform/windows/print/dos_characters.h"
#include "platform/windows/print/font_handles.h"
#include "platform/windows/print/page_drawing.h"
#include "platform/windows/print/system_headers.h"
#include "platform/windows/print/typeface.h"

namespace platform_windows::print {

// What a device says of its page.
platform::DeviceCapabilities capabilitiesOf(HDC device) noexcept;

// Measures on a device at any time and draws on it while a page is open.
class GdiSurface final : public platform::drawing::PixelSurface {
public:
    // The device must live as long as the surface.
    explicit GdiSurface(HDC device);

    using PixelSurface::setPage;

    // The device has begun a page; what is drawn without one goes nowhere.
    void beginPage();

    // Returns 0 or the system's error code; after an error the rest of the page has not been drawn.
    DWORD endPage();

    // What the device draws for a picture, made once. May fail for lack of memory.
    const std::shared_ptr<const DeviceBitmap>& prepare(const std::shared_ptr<const platform::Picture>& picture);

private:
    DeviceFont findFont(const platform::FontRequest& font) override;
    void showRun(const Run& run) override;
    void showRectangle(const platform::drawing::Area& area, platform::Color color) override;
    void showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) override;

    template <typename Step>
    void attempt(Step step);

    HDC device_;
    DosCharacters characters_;
    std::list<Typeface> typefaces_;
    const Typeface* typeface_ = nullptr;
    FontHandles handles_;
    platform::drawing::DevicePictures<std::shared_ptr<const DeviceBitmap>> bitmaps_;
    std::optional<PageDrawing> drawing_;
    DWORD failure_ = ERROR_SUCCESS;
    std::vector<wchar_t> run_;  // reused
    std::vector<int> advances_;
};

}  // namespace platform_windows::print
