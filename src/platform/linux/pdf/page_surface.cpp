#include "platform/linux/pdf/page_surface.h"

#include <algorithm>

#include "runtime/error.h"

namespace platform_linux::pdf {

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
    PixelSurface::setPage(page.device, page.color);
}

void PageSurface::begin() {
    constexpr double pointsPerInch = 72;
    content_.begin(pointsPerInch / page_.device.logPixelsX, pointsPerInch / page_.device.logPixelsY,
                   page_.heightPoints);
}

platform::drawing::PixelSurface::DeviceFont PageSurface::findFont(const platform::FontRequest& font) {
    const FontCollection::Choice choice = fonts_.choose(font.name, font.bold, font.italic);
    font_ = &choice.font;
    const fonts::CodePageFont& face = font_->face();
    return {{choice.name, face.coversCodePage() ? font.charset : platform::charsetAnsi}, &face.units()};
}

void PageSurface::fontSized() {
    size_ = font_->atSize(std::max(1, font().emHeight), textScale(), fontPixels());
    size_.turn = turn();
}

platform::drawing::Point PageSurface::onSheet(platform::drawing::Point point) const {
    return {point.x + page_.device.physicalOffsetX, point.y + page_.device.physicalOffsetY};
}

void PageSurface::showRun(const Run& run) {
    font_->use(run.text);
    content_.setColor(run.color);
    content_.showText(size_, run.text, onSheet(run.start), run.width, run.role);
}

void PageSurface::showRectangle(const platform::drawing::Area& area, platform::Color color) {
    const platform::drawing::Point corner = onSheet({area.across.start, area.down.start});
    content_.setColor(color);
    content_.fillRectangle(corner.x, corner.y, area.across.end - area.across.start, area.down.end - area.down.start);
}

void PageSurface::showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) {
    content_.showPicture(pictures_.use(picture, hasColor()), onSheet(frame.corner), frame.width, frame.height);
}

}  // namespace platform_linux::pdf
