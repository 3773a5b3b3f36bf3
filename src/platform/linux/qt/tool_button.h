// A flat button with a symbol.
#pragma once

#include <QImage>
#include <QToolButton>

#include "platform/form_design.h"

namespace platform_linux::qt {

class ToolButton : public QToolButton {
public:
    ToolButton(const platform::Control& control, QWidget& parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // So many pixels of the screen wide and high.
    const QImage& picture(int size);

    platform::Symbol symbol_;
    QImage picture_;
    QColor color_;  // of the picture
};

}  // namespace platform_linux::qt
