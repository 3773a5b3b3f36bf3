#include "platform/windows/print/gdi_surface.h"

#include <algorithm>
#include <climits>

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

void GdiSurface::showRun(const Run& run) {
    recording_.addText({typeface_, std::max(1, font().emHeight), turn(), textScale()}, colorRef(run.color),
                       {toInt(run.start.x), toInt(run.start.y)}, run.text, characters_, fontPixels());
}

void GdiSurface::showRectangle(const platform::drawing::Area& area, platform::Color color) {
    recording_.addRectangle(
        {toInt(area.across.start), toInt(area.down.start), toInt(area.across.end), toInt(area.down.end)},
        colorRef(color));
}

void GdiSurface::showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) {
    const auto& bitmap = bitmaps_.get(picture, hasColor(), [&](bool grey) {
        return std::make_shared<DeviceBitmap>(grey ? platform::drawing::greyOf(*picture) : *picture);
    });
    const Stretch across{toInt(frame.corner.x), frame.width, 0, picture->width};
    const Stretch down{toInt(frame.corner.y), frame.height, 0, picture->height};
    recording_.addPicture(bitmap, visibleStretch(across, sheet().across), visibleStretch(down, sheet().down));
}

}  // namespace platform_windows::print
