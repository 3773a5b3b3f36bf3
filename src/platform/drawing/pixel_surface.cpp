#include "platform/drawing/pixel_surface.h"

#include <algorithm>
#include <climits>

#include "platform/drawing/grey.h"
#include "runtime/error.h"

namespace platform::drawing {

namespace {

int toInt(std::int64_t value) { return static_cast<int>(std::min<std::int64_t>(value, INT_MAX)); }

TextScale scaleOn(const DeviceCapabilities& device, Turn turn) {
    const double oblong =
        device.logPixelsY > 0 ? static_cast<double>(device.logPixelsX) / static_cast<double>(device.logPixelsY) : 1;
    return turn.upright() ? TextScale{1, oblong} : TextScale{oblong, 1};
}

struct Part {
    std::size_t first = 0;
    std::size_t last = 0;  // not included
    Span along;
};

// The usual case: a line of a fixed-pitch font, all of which lies on the sheet.
bool isAllVisible(const FontPixels& font, std::string_view text, Span sheet) {
    const auto letters = static_cast<std::int64_t>(text.size());
    return font.everyAdvance && letters > 0 && *font.everyAdvance > sheet.start &&
           *font.everyAdvance * (letters - 1) < sheet.end && letters <= sheet.end - sheet.start;
}

Part visiblePart(const FontPixels& font, std::string_view text, Span sheet) {
    if (isAllVisible(font, text, sheet)) {
        return {0, text.size(), {0, font.widthOf(text)}};
    }
    const auto advance = [&](std::size_t index) { return font.advance[static_cast<unsigned char>(text[index])]; };
    Part part;
    while (part.first < text.size() && part.along.start + advance(part.first) <= sheet.start) {
        part.along.start += advance(part.first++);
    }
    part.last = part.first;
    part.along.end = part.along.start;
    // Letters less than half a pixel wide do not move the position: without an end they would fill the memory.
    const auto most = static_cast<std::size_t>(std::max<std::int64_t>(0, sheet.end - sheet.start));
    while (part.last < text.size() && part.along.end < sheet.end && part.last - part.first < most) {
        part.along.end += advance(part.last++);
    }
    return part;
}

}  // namespace

void PixelSurface::setPage(const DeviceCapabilities& device, bool color) {
    device_ = device;
    color_ = color;
    if (request_ && scaleOn(device_, turn_) != scale_) {
        sizeFont();
    }
}

FontFace PixelSurface::setFont(const FontRequest& font) {
    if (request_ != font) {
        font_ = findFont(font);
        request_ = font;
        turn_ = Turn(font.rotation);
        sizeFont();
    }
    return font_.face;
}

void PixelSurface::sizeFont() {
    scale_ = scaleOn(device_, turn_);
    pixels_ = platform::drawing::fontPixels(*font_.units, std::max(1, request_->emHeight), scale_);
    fontSized();
}

void PixelSurface::requireFont() const {
    if (!request_) {
        throw runtime::Error(runtime::errInvalidCall, "Für die Seite ist noch kein Zeichensatz gewählt.");
    }
}

int PixelSurface::textWidth(std::string_view text) const {
    requireFont();
    return toInt(pixels_.widthOf(text));
}

int PixelSurface::textHeight() const {
    requireFont();
    return toInt(pixels_.cellHeight());
}

void PixelSurface::drawText(int x, int y, std::string_view text, Color color, TextRole role) {
    requireFont();
    const Point origin{x, y};
    const Area seen = turn_.toText(origin, sheet());
    if (seen.down.start >= pixels_.cellHeight() || seen.down.end <= 0) {
        return;
    }
    const Part part = visiblePart(pixels_, text, seen.across);
    if (part.first == part.last) {
        return;
    }
    showRun({text.substr(part.first, part.last - part.first),
             turn_.toPage(origin, Point{part.along.start, pixels_.ascent}), part.along.end - part.along.start,
             shown(color), role});
    if (request_->underline) {
        const std::int64_t line = pixels_.ascent + pixels_.underlineTop;
        fill(turn_.toPage(origin, Area{part.along, {line, line + pixels_.underlineThickness}}), color);
    }
}

void PixelSurface::fillRectangle(int x, int y, int width, int height, Color color) {
    fill({{x, std::int64_t{x} + width}, {y, std::int64_t{y} + height}}, color);
}

void PixelSurface::fill(const Area& area, Color color) {
    const Area visible = intersection(area, sheet());
    if (!visible.empty()) {
        showRectangle(visible, shown(color));
    }
}

void PixelSurface::drawPicture(const std::shared_ptr<const Picture>& picture, int x, int y, int width, int height) {
    const Point corner{x, y};
    const Area area = areaBetween(corner, {corner.x + width, corner.y + height});
    if (!intersection(area, sheet()).empty()) {
        showPicture(picture, {corner, width, height});
    }
}

Color PixelSurface::shown(Color color) const { return color_ ? color : greyOf(color); }

}  // namespace platform::drawing
