#include "platform/windows/gdi/sheet_surface.h"

#include <algorithm>
#include <cmath>

namespace platform_windows::gdi {

using platform::drawing::Area;
using platform::drawing::Span;
using platform::drawing::TextScale;

std::int64_t SheetSurface::Scale::nearest(std::int64_t place) const { return std::llround((*this)(place)); }

Span SheetSurface::Scale::visible(Span span) const {
    const auto inside = [this](std::int64_t place) { return std::clamp<std::int64_t>(nearest(place), 0, size); };
    return {inside(span.start), inside(span.end)};
}

void SheetSurface::beginSheet(HDC canvas, const ScreenPixels& pixels, const platform::SheetView& view) {
    endSheet();
    setPage(view.device, view.color);
    canvas_ = canvas;
    pixels_ = pixels;
    across_ = {view.left, view.scaleX, pixels.width};
    down_ = {view.top, view.scaleY, pixels.height};
    shown_ = {across_.visible(sheet().across), down_.visible(sheet().down)};
    canvasState_ = ::SaveDC(canvas);
    ::IntersectClipRect(canvas, static_cast<int>(shown_.across.start), static_cast<int>(shown_.down.start),
                        static_cast<int>(shown_.across.end), static_cast<int>(shown_.down.end));
    drawing_.emplace(canvas, handles_);
    lettersPending_ = true;
}

void SheetSurface::endSheet() noexcept {
    if (!drawing_) {
        return;
    }
    finishRectangles();
    finishLetters();
    drawing_.reset();
    ::RestoreDC(canvas_, canvasState_);
}

void SheetSurface::finishLetters() noexcept {
    if (lettersPending_) {
        ::GdiFlush();
        lettersPending_ = false;
    }
}

void SheetSurface::finishRectangles() noexcept {
    if (rectangleColor_) {
        finishLetters();
        rectangles_.draw(pixels_, *rectangleColor_);
        rectangleColor_.reset();
    }
}

platform::drawing::PixelSurface::DeviceFont SheetSurface::findFont(const platform::FontRequest& font) {
    typeface_ = &typefaces_.get(device_.get(), font);
    return {typeface_->face(), &typeface_->units()};
}

// The em square has whole pixels on the screen. Letters are stretched only where that can be seen.
FontKey SheetSurface::fontKey() const {
    constexpr double most = 0x7FFF;
    const int em = std::max(1, font().emHeight);
    const bool upright = turn().upright();
    const double height = em * textScale().across * (upright ? across_ : down_).pixel;
    const double width = em * textScale().along * (upright ? down_ : across_).pixel;
    const double pixels = std::round(std::clamp<double>(height, 1, most));
    const bool plain = std::abs(width - height) < 0.5;
    return {typeface_, static_cast<int>(pixels), turn(), plain ? TextScale{} : TextScale{width / pixels, 1}};
}

// Letters that no pixel of the bitmap can show are left out: the system's coordinates end somewhere.
void SheetSurface::showRun(const Run& run) {
    constexpr std::size_t longest = 8192;
    if (!drawing_ || shown_.empty()) {
        return;
    }
    const bool upright = turn().upright();
    const Scale& along = upright ? down_ : across_;
    const Scale& across = upright ? across_ : down_;
    const std::int64_t direction = turn().along().x + turn().along().y;
    const std::int64_t beyond = 4 * std::int64_t{fontKey().emHeight};
    const auto isNear = [&](const Scale& scale, std::int64_t place) {
        return place >= -beyond && place <= scale.size + beyond;
    };
    const std::int64_t baseline = across.nearest(upright ? run.start.x : run.start.y);
    if (!isNear(across, baseline)) {
        return;
    }
    std::int64_t place = upright ? run.start.y : run.start.x;
    std::int64_t start = along.nearest(place);
    letters_.clear();
    advances_.clear();
    std::int64_t first = start;
    for (const char byte : run.text) {
        const auto code = static_cast<unsigned char>(byte);
        place += direction * fontPixels().advance[code];
        const std::int64_t end = along.nearest(place);
        if (isNear(along, start) && isNear(along, end)) {
            if (letters_.empty()) {
                first = start;
            }
            letters_.push_back(typefaces_.characters()[code]);
            advances_.push_back(static_cast<int>(direction * (end - start)));
        }
        start = end;
        if (letters_.size() == longest) {
            showLetters(first, baseline, run.color);
        }
    }
    showLetters(first, baseline, run.color);
}

void SheetSurface::showLetters(std::int64_t start, std::int64_t baseline, platform::Color color) {
    if (letters_.empty()) {
        return;
    }
    const auto x = static_cast<int>(turn().upright() ? baseline : start);
    const auto y = static_cast<int>(turn().upright() ? start : baseline);
    finishRectangles();
    drawing_->text(fontKey(), colorRef(color), {x, y}, letters_, advances_);
    lettersPending_ = true;
    letters_.clear();
    advances_.clear();
}

void SheetSurface::showRectangle(const Area& area, platform::Color color) {
    if (!drawing_) {
        return;
    }
    if (rectangleColor_ != color) {
        finishRectangles();
        rectangleColor_ = color;
    }
    rectangles_.add(pixels_.width, pixels_.height, across_.reach(area.across), down_.reach(area.down));
}

void SheetSurface::showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) {
    if (!drawing_) {
        return;
    }
    finishRectangles();
    finishLetters();
    const auto length = [](std::int64_t pixels, const Scale& scale) {
        return std::max<std::int64_t>(1, std::llround(static_cast<double>(std::abs(pixels)) * scale.pixel));
    };
    const PictureLook look{length(frame.width, across_), length(frame.height, down_), frame.width < 0, frame.height < 0,
                           !hasColor()};
    const auto start = [](std::int64_t place, int size) { return place + std::min(0, size); };
    pictures_.draw(
        picture, look,
        {across_.nearest(start(frame.corner.x, frame.width)), down_.nearest(start(frame.corner.y, frame.height))},
        shown_, pixels_);
}

}  // namespace platform_windows::gdi
