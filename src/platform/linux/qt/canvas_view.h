// A control that the program paints, with its scroll bars and its mouse.
#pragma once

#include <QAbstractScrollArea>
#include <QImage>
#include <QTimer>
#include <string>

#include "platform/forms.h"
#include "platform/linux/qt/sheet_surface.h"
#include "platform/linux/qt/user_events.h"

class QScreen;

namespace platform_linux::qt {

// What was painted is kept: the program is asked again only when it wants that, or where size or screen are others.
class CanvasView : public QAbstractScrollArea {
public:
    CanvasView(std::string name, QWidget& parent, UserEvents& user, SheetSurface& sheet);

    platform::CanvasSize canvasSize() const;
    void invalidate();
    void setScrollBars(platform::ScrollBar across, platform::ScrollBar down);
    void setShape(platform::Cursor cursor);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void setScrollBar(Qt::Orientation orientation, const platform::ScrollBar& bar);
    void tellScrolled();
    void tellPointer(const QMouseEvent& event, platform::PointerAction action);
    void anotherSize();
    void paintAnew();

    std::string name_;
    UserEvents& user_;
    SheetSurface& sheet_;
    QImage pixels_;
    bool valid_ = false;
    QSize outerSize_;
    QTimer late_;  // tells of another size as soon as no call is under way
};

}  // namespace platform_linux::qt
