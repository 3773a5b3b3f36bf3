#include "platform/linux/qt/screen_canvas.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform_linux::qt {

namespace {

QRectF rectangleOf(const platform::Box& box) { return {box.x, box.y, box.width, box.height}; }

QColor colorOf(platform::Color color) { return {color.red, color.green, color.blue}; }

QPalette::ColorRole roleOf(platform::SystemColor color) {
    switch (color) {
        case platform::SystemColor::windowText:
            return QPalette::WindowText;
        case platform::SystemColor::selection:
            return QPalette::Highlight;
        default:
            return QPalette::Mid;
    }
}

}  // namespace

ScreenCanvas::ScreenCanvas(QImage& pixels, const platform::CanvasSize& size, Look look, SheetSurface& sheet)
    : size_(size), look_(std::move(look)), sheet_(sheet), painter_(&pixels) {}

// Whole pixels are filled at once; smooth edges take much longer.
void ScreenCanvas::fill(const platform::Box& box, QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
    const QRectF exact = rectangleOf(box);
    const QRect whole = exact.toRect();
    if (exact == QRectF(whole)) {
        painter_.fillRect(whole, color);
        return;
    }
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.fillRect(exact, color);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void ScreenCanvas::fill(const platform::Box& box, platform::Color color, double opacity) {
    fill(box, colorOf(color), opacity);
}

void ScreenCanvas::fill(const platform::Box& box, platform::SystemColor color, double opacity) {
    fill(box, look_.palette.color(roleOf(color)), opacity);
}

double ScreenCanvas::text(const platform::Box& box, const std::string& text, platform::TextStyle style,
                          platform::Color color) {
    QFont font = look_.font;
    if (style == platform::TextStyle::heading) {
        constexpr double larger = 1.4;
        font.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * larger)));
        font.setBold(true);
    }
    painter_.setFont(font);
    painter_.setPen(colorOf(color));
    QRectF taken;
    painter_.drawText(rectangleOf(box), Qt::TextWordWrap | Qt::TextDontClip, QString::fromStdString(text), &taken);
    return taken.height();
}

platform::Surface& ScreenCanvas::sheet(const platform::SheetView& view) {
    sheet_.beginSheet(painter_, view);
    return sheet_;
}

}  // namespace platform_linux::qt
