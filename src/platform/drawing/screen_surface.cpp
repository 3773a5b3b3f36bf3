#include "platform/drawing/screen_surface.h"

#include <algorithm>
#include <cmath>

namespace platform::drawing {

std::int64_t ScreenSurface::Scale::nearest(std::int64_t place) const { return std::llround((*this)(place)); }

Span ScreenSurface::Scale::visible(Span span) const {
    const auto inside = [this](std::int64_t place) { return std::clamp<std::int64_t>(nearest(place), 0, size); };
    return {inside(span.start), inside(span.end)};
}

void ScreenSurface::beginPixels(const ScreenPixels& pixels, const SheetView& view) {
    endPixels();
    setPage(view.device, view.color);
    pixels_ = pixels;
    across_ = {view.left, view.scaleX, pixels.width};
    down_ = {view.top, view.scaleY, pixels.height};
    shown_ = {across_.visible(sheet().across), down_.visible(sheet().down)};
}

void ScreenSurface::endPixels() noexcept {
    finishRectangles();
    pixels_ = {};
    shown_ = {};
}

void ScreenSurface::finishRectangles() noexcept {
    if (rectangleColor_) {
        finishText();
        rectangles_.draw(pixels_, *rectangleColor_);
        rectangleColor_.reset();
    }
}

void ScreenSurface::showRectangle(const Area& area, Color color) {
    if (shown_.empty()) {
        return;
    }
    if (rectangleColor_ != color) {
        finishRectangles();
        rectangleColor_ = color;
    }
    rectangles_.add(pixels_.width, pixels_.height, across_.reach(area.across), down_.reach(area.down));
}

void ScreenSurface::showPicture(const std::shared_ptr<const Picture>& picture, const Frame& frame) {
    finishRectangles();
    finishText();
    const Area area = areaBetween(frame.corner, {frame.corner.x + frame.width, frame.corner.y + frame.height});
    pictures_.draw(picture,
                   {across_.reach(area.across), down_.reach(area.down), frame.width < 0, frame.height < 0, !hasColor()},
                   shown_, pixels_);
}

}  // namespace platform::drawing
