// An area of a form while the program paints it.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <string>

#include "platform/canvas.h"
#include "platform/linux/qt/sheet_surface.h"

namespace platform_linux::qt {

class ScreenCanvas final : public platform::Canvas {
public:
    // How the form looks, in pixels of the screen.
    struct Look {
        QFont font;
        QPalette palette;
    };

    // Paints on this picture, Format_RGB32, which has as many pixels as the size says. The surface serves one canvas
    // after the other.
    ScreenCanvas(QImage& pixels, const platform::CanvasSize& size, Look look, SheetSurface& sheet);
    ScreenCanvas(const ScreenCanvas&) = delete;
    ScreenCanvas& operator=(const ScreenCanvas&) = delete;
    ~ScreenCanvas() override { sheet_.endSheet(); }

    platform::CanvasSize size() const override { return size_; }
    void fill(const platform::Box& box, platform::Color color, double opacity) override;
    void fill(const platform::Box& box, platform::SystemColor color, double opacity) override;
    double text(const platform::Box& box, const std::string& text, platform::TextStyle style,
                platform::Color color) override;
    platform::Surface& sheet(const platform::SheetView& view) override;

private:
    platform::drawing::ScreenPixels pixels_;
    platform::CanvasSize size_;
    Look look_;
    SheetSurface& sheet_;
    QPainter painter_;
};

}  // namespace platform_linux::qt
