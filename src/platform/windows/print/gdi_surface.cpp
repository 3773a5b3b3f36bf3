#include "platform/windows/print/gdi_surface.h"

#include <algorithm>
#include <climits>

#include "platform/windows/print/spooler_error.h"

namespace platform_windows::print {

namespace {

int toInt(std::int64_t value) { return static_cast<int>(std::clamp<std::int64_t>(value, INT_MIN, INT_MAX)); }

COLORREF colorRef(platform::Color color) { return RGB(color.red, color.green, color.blue); }

}  // namespace

platform::DeviceCapabilities capabilitiesOf(HDC device) noexcept {
    const auto ask = [device](int index) { return ::GetDeviceCaps(device, index); };
    platform::DeviceCapabilities capabilities;
    capabilities.horzRes = ask(HORZRES);
    capabilities.vertRes = ask(VERTRES);
    capabilities.logPixelsX = ask(LOGPIXELSX);
    capabilities.logPixelsY = ask(LOGPIXELSY);
    capabilities.physicalWidth = ask(PHYSICALWIDTH);
    capabilities.physicalHeight = ask(PHYSICALHEIGHT);
    capabilities.physicalOffsetX = ask(PHYSICALOFFSETX);
    capabilities.physicalOffsetY = ask(PHYSICALOFFSETY);
    return capabilities;
}

GdiSurface::GdiSurface(HDC device) : device_(device), characters_(dosCharacters()) {}

platform::drawing::PixelSurface::DeviceFont GdiSurface::findFont(const platform::FontRequest& font) {
    const auto known = std::find_if(typefaces_.begin(), typefaces_.end(),
                                    [&](const Typeface& typeface) { return typeface.isFor(font); });
    typeface_ = known != typefaces_.end() ? &*known : &typefaces_.emplace_back(device_, font, characters_);
    return {typeface_->face(), &typeface_->units()};
}

void GdiSurface::beginPage() {
    failure_ = ERROR_SUCCESS;
    drawing_.emplace(device_, handles_);
}

DWORD GdiSurface::endPage() {
    drawing_.reset();
    return failure_;
}

template <typename Step>
void GdiSurface::attempt(Step step) {
    if (drawing_ && failure_ == ERROR_SUCCESS) {
        ::SetLastError(ERROR_SUCCESS);
        failure_ = step(*drawing_) ? DWORD{ERROR_SUCCESS} : lastError();
    }
}

void GdiSurface::showRun(const Run& run) {
    run_.clear();
    advances_.clear();
    for (const char byte : run.text) {
        const auto code = static_cast<unsigned char>(byte);
        run_.push_back(characters_[code]);
        advances_.push_back(toInt(fontPixels().advance[code]));
    }
    attempt([&](PageDrawing& drawing) {
        return drawing.text({typeface_, std::max(1, font().emHeight), turn(), textScale()}, colorRef(run.color),
                            {toInt(run.start.x), toInt(run.start.y)}, run_, advances_);
    });
}

void GdiSurface::showRectangle(const platform::drawing::Area& area, platform::Color color) {
    const RECT rectangle{toInt(area.across.start), toInt(area.down.start), toInt(area.across.end),
                         toInt(area.down.end)};
    attempt([&](PageDrawing& drawing) { return drawing.rectangle(rectangle, colorRef(color)); });
}

void GdiSurface::showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) {
    const std::shared_ptr<const DeviceBitmap>& bitmap = prepare(picture);
    const Stretch across{toInt(frame.corner.x), frame.width, 0, picture->width};
    const Stretch down{toInt(frame.corner.y), frame.height, 0, picture->height};
    attempt([&](PageDrawing& drawing) {
        return drawing.picture(*bitmap, visibleStretch(across, sheet().across), visibleStretch(down, sheet().down));
    });
}

const std::shared_ptr<const DeviceBitmap>& GdiSurface::prepare(
    const std::shared_ptr<const platform::Picture>& picture) {
    return bitmaps_.get(picture, hasColor(), [&](bool grey) {
        return std::make_shared<DeviceBitmap>(grey ? platform::drawing::greyOf(*picture) : *picture);
    });
}

}  // namespace platform_windows::print
