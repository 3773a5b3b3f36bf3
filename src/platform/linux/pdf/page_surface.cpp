#include "platform/linux/pdf/page_surface.h"

#include <algorithm>
#include <climits>

#include "runtime/error.h"

namespace platform_linux::pdf {

namespace {

// Luma by ITU-R BT.601.
std::uint8_t luminance(platform::Color color) {
    return static_cast<std::uint8_t>((299 * color.red + 587 * color.green + 114 * color.blue + 500) / 1000);
}

}  // namespace

void PageSurface::check(const PdfPage& page) {
    if (page.device.logPixelsX <= 0 || page.device.logPixelsY <= 0 || page.device.physicalWidth <= 0 ||
        page.device.physicalHeight <= 0 || !(page.widthPoints > 0) || !(page.heightPoints > 0)) {
        throw runtime::Error(runtime::errInvalidPropertyValue,
                             "Die Seite der PDF-Datei hat keine Größe oder keine Auflösung. Bitte Papierformat und "
                             "Auflösung des Druckers prüfen.");
    }
}

void PageSurface::setPage(const PdfPage& page) {
    page_ = page;
    if (font_ != nullptr && stretch() != size_.stretch) {
        size_ = font_->atSize(static_cast<int>(size_.em), stretch());
    }
}

void PageSurface::begin() {
    constexpr double pointsPerInch = 72;
    content_.begin(pointsPerInch / page_.device.logPixelsX, pointsPerInch / page_.device.logPixelsY,
                   page_.heightPoints);
}

double PageSurface::stretch() const {
    return page_.device.logPixelsY > 0 ? static_cast<double>(page_.device.logPixelsX) / page_.device.logPixelsY : 1;
}

platform::FontFace PageSurface::setFont(const platform::FontRequest& font) {
    if (request_ == font) {
        return face_;
    }
    const FontCollection::Choice& choice = fonts_.choose(font.name, font.bold, font.italic);
    font_ = choice.font;
    size_ = font_->atSize(std::max(1, font.emHeight), stretch());
    face_ = {choice.name, font_->coversCodePage() ? font.charset : platform::charsetAnsi};
    request_ = font;
    return face_;
}

void PageSurface::requireFont() const {
    if (font_ == nullptr) {
        throw runtime::Error(runtime::errInvalidCall, "Für die Seite ist noch kein Zeichensatz gewählt.");
    }
}

int PageSurface::textWidth(std::string_view text) const {
    requireFont();
    std::int64_t width = 0;
    for (const char byte : text) {
        width += size_.advance[static_cast<unsigned char>(byte)];
    }
    return static_cast<int>(std::min<std::int64_t>(width, INT_MAX));
}

int PageSurface::textHeight() const {
    requireFont();
    return static_cast<int>(size_.ascent + size_.descent);
}

void PageSurface::drawPicture(const std::shared_ptr<const platform::Picture>&, int, int, int, int) {}

void PageSurface::drawText(int x, int y, std::string_view text, platform::Color color, platform::TextRole role) {
    requireFont();
    const std::int64_t sheetWidth = page_.device.physicalWidth;
    const std::int64_t left = std::int64_t{x} + page_.device.physicalOffsetX;
    const std::int64_t top = std::int64_t{y} + page_.device.physicalOffsetY;
    const std::int64_t baseline = top + size_.ascent;
    if (top >= page_.device.physicalHeight || baseline + size_.descent <= 0) {
        return;
    }
    const auto advance = [&](std::size_t index) { return size_.advance[static_cast<unsigned char>(text[index])]; };
    std::size_t first = 0;
    std::int64_t start = left;
    while (first < text.size() && start + advance(first) <= 0) {
        start += advance(first++);
    }
    std::size_t last = first;
    std::int64_t end = start;
    while (last < text.size() && end < sheetWidth) {
        end += advance(last++);
    }
    if (first == last) {
        return;
    }
    const std::string_view visible = text.substr(first, last - first);
    font_->use(visible);
    content_.setColor(shown(color));
    content_.showText(size_, visible, start, baseline, end - start, role);
    if (request_->underline) {
        const std::int64_t line = baseline + size_.underlineTop;
        fill({start, end}, {line, line + size_.underlineThickness});
    }
}

void PageSurface::fillRectangle(int x, int y, int width, int height, platform::Color color) {
    const std::int64_t left = std::int64_t{x} + page_.device.physicalOffsetX;
    const std::int64_t top = std::int64_t{y} + page_.device.physicalOffsetY;
    content_.setColor(shown(color));
    fill({left, left + width}, {top, top + height});
}

void PageSurface::fill(Span across, Span down) {
    across = {std::max<std::int64_t>(across.start, 0), std::min<std::int64_t>(across.end, page_.device.physicalWidth)};
    down = {std::max<std::int64_t>(down.start, 0), std::min<std::int64_t>(down.end, page_.device.physicalHeight)};
    if (across.start < across.end && down.start < down.end) {
        content_.fillRectangle(across.start, down.start, across.end - across.start, down.end - down.start);
    }
}

platform::Color PageSurface::shown(platform::Color color) const {
    if (page_.color) {
        return color;
    }
    const std::uint8_t grey = luminance(color);
    return {grey, grey, grey};
}

}  // namespace platform_linux::pdf
