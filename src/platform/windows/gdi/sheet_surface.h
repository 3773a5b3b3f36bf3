// The surface of a page as the screen shows it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/canvas.h"
#include "platform/drawing/pixel_surface.h"
#include "platform/windows/gdi/font_handles.h"
#include "platform/windows/gdi/gdi_handles.h"
#include "platform/windows/gdi/joined_areas.h"
#include "platform/windows/gdi/page_drawing.h"
#include "platform/windows/gdi/scaled_pictures.h"
#include "platform/windows/gdi/screen_pixels.h"
#include "platform/windows/gdi/system_headers.h"
#include "platform/windows/gdi/typefaces.h"

namespace platform_windows::gdi {

// Measures as a printer does and draws on a bitmap while a sheet is shown, otherwise nowhere. Kept for as long as
// sheets are shown: fonts and pictures that appear again and again are made once.
//
// Each letter stands at the screen's pixel next to its place on paper. Rectangles keep their darkness: a bar narrower
// than a pixel is paler than one as wide.
class SheetSurface final : public platform::drawing::PixelSurface {
public:
    SheetSurface() = default;
    SheetSurface(const SheetSurface&) = delete;
    SheetSurface& operator=(const SheetSurface&) = delete;
    ~SheetSurface() override { endSheet(); }

    // Draws on this bitmap, which is selected on the canvas, from now on until the sheet's end. Both are borrowed.
    void beginSheet(HDC canvas, const ScreenPixels& pixels, const platform::SheetView& view);

    // The canvas has its own font, colours and clipping again, and the bitmap all that was drawn. Without a sheet
    // nothing happens.
    void endSheet() noexcept;

private:
    // One direction of the sheet on the screen.
    struct Scale {
        double start = 0;
        double pixel = 1;  // a pixel of the printer
        int size = 0;      // of the bitmap

        double operator()(std::int64_t place) const { return start + static_cast<double>(place) * pixel; }
        std::int64_t nearest(std::int64_t place) const;
        Reach reach(platform::drawing::Span span) const { return {(*this)(span.start), (*this)(span.end)}; }
        // Whole pixels of the bitmap.
        platform::drawing::Span visible(platform::drawing::Span span) const;
    };

    DeviceFont findFont(const platform::FontRequest& font) override;
    void showRun(const Run& run) override;
    void showRectangle(const platform::drawing::Area& area, platform::Color color) override;
    void showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) override;

    FontKey fontKey() const;
    void showLetters(std::int64_t start, std::int64_t baseline, platform::Color color);
    // What the system has drawn so far is on the bitmap.
    void finishLetters() noexcept;
    void finishRectangles() noexcept;

    DeviceContext device_{::CreateCompatibleDC(nullptr)};  // to measure on
    Typefaces typefaces_{Smoothing::grey};
    const Typeface* typeface_ = nullptr;
    FontHandles handles_;
    ScaledPictures pictures_;

    HDC canvas_ = nullptr;
    int canvasState_ = 0;
    ScreenPixels pixels_;
    Scale across_;
    Scale down_;
    platform::drawing::Area shown_;  // of the bitmap
    std::optional<PageDrawing> drawing_;
    bool lettersPending_ = false;
    JoinedAreas rectangles_;
    std::optional<platform::Color> rectangleColor_;  // of those not yet drawn
    std::vector<wchar_t> letters_;                   // reused
    std::vector<int> advances_;
};

}  // namespace platform_windows::gdi
