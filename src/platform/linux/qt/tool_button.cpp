#include "platform/linux/qt/tool_button.h"

#include <QPainter>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <cmath>
#include <cstdint>
#include <vector>

#include "platform/drawing/symbol_pixels.h"

namespace platform_linux::qt {

ToolButton::ToolButton(const platform::Control& control, QWidget& parent)
    : QToolButton(&parent), symbol_(control.symbol) {
    setAutoRaise(true);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(QString::fromStdString(control.caption).remove('&'));
}

const QImage& ToolButton::picture(int size) {
    const QColor color = palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText);
    if (picture_.width() != size || color_ != color) {
        color_ = color;
        picture_ = QImage(size, size, QImage::Format_ARGB32_Premultiplied);
        const std::vector<std::uint8_t> opacity = platform::drawing::symbolPixels(symbol_, size);
        for (int pixel = 0; pixel < size * size; ++pixel) {
            const QRgb shade =
                qPremultiply(qRgba(color.red(), color.green(), color.blue(), opacity[static_cast<std::size_t>(pixel)]));
            reinterpret_cast<QRgb*>(picture_.scanLine(pixel / size))[pixel % size] = shade;
        }
    }
    return picture_;
}

void ToolButton::paintEvent(QPaintEvent* /*event*/) {
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.icon = {};
    option.text.clear();
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    constexpr double usualSize = 16;
    constexpr double usualDpi = 96;
    const double ratio = devicePixelRatioF();
    const int size = static_cast<int>(std::lround(usualSize * logicalDpiY() * ratio / usualDpi));
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(static_cast<int>((width() * ratio - size) / 2), static_cast<int>((height() * ratio - size) / 2),
                      picture(size));
}

}  // namespace platform_linux::qt
