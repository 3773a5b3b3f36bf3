// The surface of a sheet on the screen: what is drawn in the printer's pixels appears reduced or enlarged.
#pragma once

#include <QPainter>
#include <QRect>
#include <functional>
#include <optional>
#include <vector>

#include "platform/canvas.h"
#include "platform/drawing/pixel_surface.h"
#include "platform/linux/fonts/font_catalog.h"
#include "platform/linux/qt/glyph_masks.h"
#include "platform/linux/qt/scaled_pictures.h"

namespace platform_linux::qt {

// Glyphs, rectangles and pictures keep their exact places, parts of a pixel included, and cover each pixel by the part
// that they have of it. The faces are the PDF's own. One surface serves sheet after sheet, and keeps what they share.
class SheetSurface final : public platform::drawing::PixelSurface {
public:
    // The code page is asked for with the first font.
    explicit SheetSurface(std::function<fonts::CodePage()> codePage) : codePage_(std::move(codePage)) {}

    // What is drawn from now on appears on this sheet. The painter draws in pixels of the screen; it is borrowed until
    // the next call, and nothing of its state is changed.
    void beginSheet(QPainter& painter, const platform::SheetView& view);

private:
    DeviceFont findFont(const platform::FontRequest& font) override;
    void showRun(const Run& run) override;
    void showRectangle(const platform::drawing::Area& area, platform::Color color) override;
    void showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) override;

    struct Glyph {
        unsigned char byte = 0;
        QPointF place;
    };

    QPointF onScreen(platform::drawing::Point point) const;
    QTransform glyphMatrix() const;
    // Of the run, those that may be seen.
    const std::vector<Glyph>& visibleGlyphs(const Run& run, double reach);
    void showOutlines(const std::vector<Glyph>& glyphs, const QTransform& matrix, QColor color);
    void showMasks(const std::vector<Glyph>& glyphs, const QTransform& matrix, QColor color);
    void blendMask(const GlyphMasks::Mask& mask, const QRect& box);

    std::function<fonts::CodePage()> codePage_;
    std::optional<fonts::FontCatalog> fonts_;
    const fonts::CodePageFont* font_ = nullptr;
    QPainter* painter_ = nullptr;
    platform::SheetView view_;
    QRect visible_;  // of the sheet, pixels of the screen
    GlyphMasks masks_;
    ScaledPictures pictures_;
    // Of the run being shown.
    std::vector<Glyph> glyphs_;
    std::vector<GlyphMasks::Mask> placed_;  // on the screen
    std::vector<std::uint8_t> coverage_;
    std::vector<QRgb> pixels_;
};

}  // namespace platform_linux::qt
