#include "platform/windows/print/gdi_surface.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>

#include "runtime/error.h"

namespace platform_windows::print {

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

void GdiSurface::setPage(const platform::DeviceCapabilities& capabilities, bool color) {
    capabilities_ = capabilities;
    color_ = color;
    if (typeface_ != nullptr) {
        size_ = typeface_->atSize(request_->emHeight, stretch());
    }
}

double GdiSurface::stretch() const noexcept {
    return capabilities_.logPixelsY > 0 ? static_cast<double>(capabilities_.logPixelsX) / capabilities_.logPixelsY : 1;
}

platform::FontFace GdiSurface::setFont(const platform::FontRequest& font) {
    if (request_ != font) {
        const auto known = std::find_if(typefaces_.begin(), typefaces_.end(),
                                        [&](const Typeface& typeface) { return typeface.isFor(font); });
        typeface_ = known != typefaces_.end() ? &*known : &typefaces_.emplace_back(device_, font, characters_);
        request_ = font;
        request_->emHeight = std::max(1, font.emHeight);
        size_ = typeface_->atSize(request_->emHeight, stretch());
    }
    return typeface_->face();
}

void GdiSurface::requireFont() const {
    if (typeface_ == nullptr) {
        throw runtime::Error(runtime::errInvalidCall, "Für die Seite ist noch kein Zeichensatz gewählt.");
    }
}

int GdiSurface::textWidth(std::string_view text) const {
    requireFont();
    std::int64_t width = 0;
    for (const char byte : text) {
        width += size_.advance[static_cast<unsigned char>(byte)];
    }
    return static_cast<int>(std::min<std::int64_t>(width, INT_MAX));
}

int GdiSurface::textHeight() const {
    requireFont();
    return static_cast<int>(size_.ascent + size_.descent);
}

void GdiSurface::drawPicture(const std::shared_ptr<const platform::Picture>&, int, int, int, int) {}

void GdiSurface::drawText(int x, int y, std::string_view text, platform::Color color, platform::TextRole) {
    requireFont();
    const std::int64_t left = -std::int64_t{capabilities_.physicalOffsetX};
    const std::int64_t right = left + capabilities_.physicalWidth;
    const std::int64_t top = -std::int64_t{capabilities_.physicalOffsetY};
    const std::int64_t baseline = std::int64_t{y} + size_.ascent;
    if (y >= top + capabilities_.physicalHeight || baseline + size_.descent <= top) {
        return;
    }
    const auto advance = [&](std::size_t index) { return size_.advance[static_cast<unsigned char>(text[index])]; };
    std::size_t first = 0;
    std::int64_t start = x;
    while (first < text.size() && start + advance(first) <= left) {
        start += advance(first++);
    }
    std::size_t last = first;
    std::int64_t end = start;
    // Letters less than half a pixel wide do not move the position: without an end they would fill the memory.
    const auto most = static_cast<std::size_t>(std::max(0, capabilities_.physicalWidth));
    while (last < text.size() && end < right && last - first < most) {
        end += advance(last++);
    }
    if (first == last) {
        return;
    }
    recording_.addText({typeface_, request_->emHeight}, shown(color),
                       {static_cast<LONG>(start), static_cast<LONG>(baseline)}, text.substr(first, last - first),
                       characters_, size_.advance);
    if (request_->underline) {
        const std::int64_t line = baseline + size_.underlineTop;
        fill({start, end}, {line, line + size_.underlineThickness}, shown(color));
    }
}

void GdiSurface::fillRectangle(int x, int y, int width, int height, platform::Color color) {
    fill({x, std::int64_t{x} + width}, {y, std::int64_t{y} + height}, shown(color));
}

void GdiSurface::fill(Span across, Span down, COLORREF color) {
    const auto clip = [](std::int64_t edge, std::int64_t offset, std::int64_t sheet) {
        return static_cast<LONG>(std::clamp(edge, -offset, std::max(sheet, offset) - offset));
    };
    const auto column = [&](std::int64_t edge) {
        return clip(edge, capabilities_.physicalOffsetX, capabilities_.physicalWidth);
    };
    const auto row = [&](std::int64_t edge) {
        return clip(edge, capabilities_.physicalOffsetY, capabilities_.physicalHeight);
    };
    const RECT area{column(across.start), row(down.start), column(across.end), row(down.end)};
    if (area.left < area.right && area.top < area.bottom) {
        recording_.addRectangle(area, color);
    }
}

COLORREF GdiSurface::shown(platform::Color color) const noexcept {
    if (color_) {
        return RGB(color.red, color.green, color.blue);
    }
    // Luma by ITU-R BT.601.
    const int grey = (299 * color.red + 587 * color.green + 114 * color.blue + 500) / 1000;
    return RGB(grey, grey, grey);
}

}  // namespace platform_windows::print
