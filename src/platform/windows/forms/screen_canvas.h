// An area of a form while the program paints it.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <string>

#include "platform/canvas.h"
#include "platform/windows/forms/pixel_buffer.h"
#include "platform/windows/gdi/sheet_surface.h"

namespace platform_windows::forms {

class ScreenCanvas final : public platform::Canvas {
public:
    // Paints on these pixels, which are as many as the size says. The surface serves one canvas after the other.
    ScreenCanvas(const PixelBuffer& pixels, const platform::CanvasSize& size, gdi::SheetSurface& sheet)
        : pixels_(pixels), size_(size), sheet_(sheet) {}
    ScreenCanvas(const ScreenCanvas&) = delete;
    ScreenCanvas& operator=(const ScreenCanvas&) = delete;
    ~ScreenCanvas() override { sheet_.endSheet(); }

    platform::CanvasSize size() const override { return size_; }
    void fill(const platform::Box& box, platform::Color color, double opacity) override;
    void fill(const platform::Box& box, platform::SystemColor color, double opacity) override;
    double text(const platform::Box& box, const std::string& text, platform::TextStyle style,
                platform::Color color) override;
    platform::Surface& sheet(const platform::SheetView& view) override;

private:
    const PixelBuffer& pixels_;
    platform::CanvasSize size_;
    gdi::SheetSurface& sheet_;
};

}  // namespace platform_windows::forms
