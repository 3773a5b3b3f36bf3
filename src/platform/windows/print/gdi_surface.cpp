#include "platform/windows/print/gdi_surface.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "platform/windows/print/spooler_error.h"

namespace platform_windows::print {

namespace {

int toInt(std::int64_t value) { return static_cast<int>(std::clamp<std::int64_t>(value, INT_MIN, INT_MAX)); }

}  // namespace

GdiSurface::GdiSurface(HDC device, PrintCalls calls) : device_(device), calls_(std::move(calls)) {}

void GdiSurface::takePage(bool color) {
    const auto ask = [this](int index) { return calls_.capability(device_, index); };
    platform::DeviceCapabilities capabilities;
    capabilities.horzRes = ask(HORZRES);
    capabilities.vertRes = ask(VERTRES);
    capabilities.logPixelsX = ask(LOGPIXELSX);
    capabilities.logPixelsY = ask(LOGPIXELSY);
    capabilities.physicalWidth = ask(PHYSICALWIDTH);
    capabilities.physicalHeight = ask(PHYSICALHEIGHT);
    capabilities.physicalOffsetX = ask(PHYSICALOFFSETX);
    capabilities.physicalOffsetY = ask(PHYSICALOFFSETY);
    setPage(capabilities, color);
}

platform::drawing::PixelSurface::DeviceFont GdiSurface::findFont(const platform::FontRequest& font) {
    typeface_ = &typefaces_.get(device_, font);
    return {typeface_->face(), &typeface_->units()};
}

void GdiSurface::beginPage() {
    failure_ = ERROR_SUCCESS;
    drawing_.emplace(device_, handles_);
}

void GdiSurface::giveUp(DWORD code) noexcept {
    if (failure_ == ERROR_SUCCESS) {
        failure_ = code;
    }
}

DWORD GdiSurface::endPage() {
    drawing_.reset();
    if (failure_ != ERROR_SUCCESS) {
        const platform::drawing::Area all = sheet();
        ::PatBlt(device_, toInt(all.across.start), toInt(all.down.start), toInt(all.across.end - all.across.start),
                 toInt(all.down.end - all.down.start), WHITENESS);
    }
    return failure_;
}

template <typename Step>
void GdiSurface::attempt(Step step) {
    if (!drawing_ || failure_ != ERROR_SUCCESS) {
        return;
    }
    const auto done = [&] {
        ::SetLastError(ERROR_SUCCESS);
        return step(*drawing_);
    };
    if (done()) {
        return;
    }
    drawing_.reset();
    handles_.clear();
    drawing_.emplace(device_, handles_);
    failure_ = done() ? DWORD{ERROR_SUCCESS} : lastError();
}

gdi::FontKey GdiSurface::fontKey() const { return {typeface_, std::max(1, font().emHeight), turn(), textScale()}; }

// In pieces no longer than the system draws. How long an advance up or down the page is where pixels are not square,
// devices do not agree upon: there letters are drawn one by one.
void GdiSurface::showRun(const Run& run) {
    constexpr std::size_t longest = 8192;
    const bool oneByOne = turn().upright() && textScale() != platform::drawing::TextScale{};
    platform::drawing::Point start = run.start;
    for (std::string_view rest = run.text; !rest.empty();) {
        const std::string_view piece = rest.substr(0, oneByOne ? 1 : longest);
        run_.clear();
        advances_.clear();
        for (const char byte : piece) {
            const auto code = static_cast<unsigned char>(byte);
            run_.push_back(typefaces_.characters()[code]);
            advances_.push_back(toInt(fontPixels().advance[code]));
        }
        attempt([&](gdi::PageDrawing& drawing) {
            return drawing.text(fontKey(), gdi::colorRef(run.color), {toInt(start.x), toInt(start.y)}, run_, advances_);
        });
        start = turn().toPage(start, platform::drawing::Point{fontPixels().widthOf(piece), 0});
        rest.remove_prefix(piece.size());
    }
}

void GdiSurface::showRectangle(const platform::drawing::Area& area, platform::Color color) {
    const RECT rectangle{toInt(area.across.start), toInt(area.down.start), toInt(area.across.end),
                         toInt(area.down.end)};
    attempt([&](gdi::PageDrawing& drawing) { return drawing.rectangle(rectangle, gdi::colorRef(color)); });
}

void GdiSurface::showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) {
    const std::shared_ptr<const gdi::DeviceBitmap>& bitmap = prepare(picture);
    const gdi::Stretch across{toInt(frame.corner.x), frame.width, 0, picture->width};
    const gdi::Stretch down{toInt(frame.corner.y), frame.height, 0, picture->height};
    const platform::DeviceCapabilities device = capabilities();
    const platform::drawing::Area whole =
        areaBetween(frame.corner, {frame.corner.x + frame.width, frame.corner.y + frame.height});
    const platform::drawing::Area page = platform::drawing::areaBetween({}, {device.horzRes, device.vertRes});
    const bool printable = !intersection(whole, page).empty();
    attempt([&](gdi::PageDrawing& drawing) {
        return drawing.picture(*bitmap, gdi::visibleStretch(across, sheet().across),
                               gdi::visibleStretch(down, sheet().down), printable, calls_.stretchPicture);
    });
}

const std::shared_ptr<const gdi::DeviceBitmap>& GdiSurface::prepare(
    const std::shared_ptr<const platform::Picture>& picture) {
    return bitmaps_.get(picture, hasColor(), [&](bool grey) {
        return std::make_shared<gdi::DeviceBitmap>(grey ? platform::drawing::greyOf(*picture) : *picture);
    });
}

}  // namespace platform_windows::print
