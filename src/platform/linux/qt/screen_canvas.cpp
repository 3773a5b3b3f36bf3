#include "platform/linux/qt/screen_canvas.h"

#include <cmath>
#include <utility>

namespace platform_linux::qt {

namespace {

QRectF rectangleOf(const platform::Box& box) { return {box.x, box.y, box.width, box.height}; }

platform::drawing::ScreenPixels pixelsOf(QImage& image) {
    return {reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(),
            static_cast<int>(image.bytesPerLine() / 4)};
}

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
    : pixels_(pixelsOf(pixels)), size_(size), look_(std::move(look)), sheet_(sheet), painter_(&pixels) {}

void ScreenCanvas::fill(const platform::Box& box, platform::Color color, double opacity) {
    sheet_.endSheet();
    platform::drawing::blend(pixels_, {box.x, box.x + box.width}, {box.y, box.y + box.height}, color, opacity);
}

void ScreenCanvas::fill(const platform::Box& box, platform::SystemColor color, double opacity) {
    const QColor shade = look_.palette.color(roleOf(color));
    const auto level = [](int value) { return static_cast<std::uint8_t>(value); };
    fill(box, platform::Color{level(shade.red()), level(shade.green()), level(shade.blue())}, opacity);
}

double ScreenCanvas::text(const platform::Box& box, const std::string& text, platform::TextStyle style,
                          platform::Color color) {
    sheet_.endSheet();
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
    sheet_.beginSheet(pixels_, view);
    return sheet_;
}

}  // namespace platform_linux::qt
