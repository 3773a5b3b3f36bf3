// What surfaces that show a sheet on the screen have in common: places and sizes, rectangles and pictures. What remains
// for a system is its text.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/canvas.h"
#include "platform/drawing/joined_areas.h"
#include "platform/drawing/pixel_surface.h"
#include "platform/drawing/scaled_pictures.h"
#include "platform/drawing/screen_pixels.h"

namespace platform::drawing {

// Measures as a printer does, and draws on a bitmap while a sheet is shown, otherwise nowhere. Kept for as long as
// sheets are shown: what appears again and again is made once.
//
// Rectangles and pictures keep their exact places, parts of a pixel included, and their darkness: a bar narrower than a
// pixel is paler than one as wide.
class ScreenSurface : public PixelSurface {
protected:
    // One direction of the sheet on the screen.
    struct Scale {
        double start = 0;
        double pixel = 1;  // a pixel of the printer
        int size = 0;      // of the bitmap

        double operator()(std::int64_t place) const { return start + static_cast<double>(place) * pixel; }
        std::int64_t nearest(std::int64_t place) const;
        Reach reach(Span span) const { return {(*this)(span.start), (*this)(span.end)}; }
        // Whole pixels of the bitmap.
        Span visible(Span span) const;
    };

    // What is drawn from now on appears on this bitmap. It is borrowed.
    void beginPixels(const ScreenPixels& pixels, const SheetView& view);
    // All that was drawn is on the bitmap. Without one nothing happens.
    void endPixels() noexcept;

    // All drawn before is on the bitmap, as it has to be before text comes over it.
    void finishRectangles() noexcept;

    const ScreenPixels& pixels() const { return pixels_; }
    const Scale& across() const { return across_; }
    const Scale& down() const { return down_; }
    // Of the bitmap; empty while no sheet is shown.
    const Area& shown() const { return shown_; }

private:
    // Text drawn before is on the bitmap.
    virtual void finishText() noexcept {}
    void showRectangle(const Area& area, Color color) final;
    void showPicture(const std::shared_ptr<const Picture>& picture, const Frame& frame) final;

    ScreenPixels pixels_;
    Scale across_;
    Scale down_;
    Area shown_;
    JoinedAreas rectangles_;
    std::optional<Color> rectangleColor_;  // of those not yet drawn
    ScaledPictures pictures_;
};

}  // namespace platform::drawing
