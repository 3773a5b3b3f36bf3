// The surface of a page that GDI draws.
#pragma once

#include <list>

#include "platform/drawing/device_pictures.h"
#include "platform/drawing/pixel_surface.h"
#include "platform/windows/print/device_bitmap.h"
#include "platform/windows/print/dos_characters.h"
#include "platform/windows/print/font_handles.h"
#include "platform/windows/print/page_recording.h"
#include "platform/windows/print/system_headers.h"
#include "platform/windows/print/typeface.h"

namespace platform_windows::print {

// What a device says of its page.
platform::DeviceCapabilities capabilitiesOf(HDC device) noexcept;

// Measures on a device at once and draws on it when the page is played.
class GdiSurface final : public platform::drawing::PixelSurface {
public:
    // The device must live as long as the surface.
    explicit GdiSurface(HDC device);

    using PixelSurface::setPage;

    // Forgets what was drawn.
    void begin() noexcept { recording_.clear(); }

    // Draws the page. Returns 0 or the system's error code.
    DWORD play() { return recording_.play(device_, handles_); }

private:
    DeviceFont findFont(const platform::FontRequest& font) override;
    void showRun(const Run& run) override;
    void showRectangle(const platform::drawing::Area& area, platform::Color color) override;
    void showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) override;

    HDC device_;
    DosCharacters characters_;
    std::list<Typeface> typefaces_;
    const Typeface* typeface_ = nullptr;
    FontHandles handles_;
    platform::drawing::DevicePictures<std::shared_ptr<const DeviceBitmap>> bitmaps_;
    PageRecording recording_;
};

}  // namespace platform_windows::print
