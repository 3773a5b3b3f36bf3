#include "platform/windows/gdi/sheet_surface.h"

#include <algorithm>
#include <cmath>

namespace platform_windows::gdi {

using platform::drawing::TextScale;

void SheetSurface::beginSheet(HDC canvas, const platform::drawing::ScreenPixels& pixels,
                              const platform::SheetView& view) {
    endSheet();
    beginPixels(pixels, view);
    canvas_ = canvas;
    canvasState_ = ::SaveDC(canvas);
    ::IntersectClipRect(canvas, static_cast<int>(shown().across.start), static_cast<int>(shown().down.start),
                        static_cast<int>(shown().across.end), static_cast<int>(shown().down.end));
    drawing_.emplace(canvas, handles_);
    lettersPending_ = true;
}

void SheetSurface::endSheet() noexcept {
    if (!drawing_) {
        return;
    }
    endPixels();
    finishText();
    drawing_.reset();
    ::RestoreDC(canvas_, canvasState_);
}

void SheetSurface::finishText() noexcept {
    if (lettersPending_) {
        ::GdiFlush();
        lettersPending_ = false;
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
    const double height = em * textScale().across * (upright ? across() : down()).pixel;
    const double width = em * textScale().along * (upright ? down() : across()).pixel;
    const double pixels = std::round(std::clamp<double>(height, 1, most));
    const bool plain = std::abs(width - height) < 0.5;
    return {typeface_, static_cast<int>(pixels), turn(), plain ? TextScale{} : TextScale{width / pixels, 1}};
}

// Letters that no pixel of the bitmap can show are left out: the system's coordinates end somewhere.
void SheetSurface::showRun(const Run& run) {
    constexpr std::size_t longest = 8192;
    if (shown().empty()) {
        return;
    }
    const bool upright = turn().upright();
    const Scale& along = upright ? this->down() : this->across();
    const Scale& across = upright ? this->across() : this->down();
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

}  // namespace platform_windows::gdi
