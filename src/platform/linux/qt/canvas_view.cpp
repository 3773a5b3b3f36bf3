#include "platform/linux/qt/canvas_view.h"

#include <QFontInfo>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/qt/screen_canvas.h"
#include "platform/linux/qt/screen_resolution.h"

namespace platform_linux::qt {

namespace {

using platform::PointerAction;
using platform::PointerButton;

PointerButton buttonOf(Qt::MouseButtons buttons) {
    if (buttons.testFlag(Qt::LeftButton)) {
        return PointerButton::left;
    }
    return buttons.testFlag(Qt::MiddleButton) ? PointerButton::middle : PointerButton::none;
}

Qt::CursorShape shapeOf(platform::Cursor cursor) {
    switch (cursor) {
        case platform::Cursor::text:
            return Qt::IBeamCursor;
        case platform::Cursor::hand:
            return Qt::OpenHandCursor;
        case platform::Cursor::grabbing:
            return Qt::ClosedHandCursor;
        case platform::Cursor::wait:
            return Qt::WaitCursor;
        default:
            return Qt::ArrowCursor;
    }
}

}  // namespace

CanvasView::CanvasView(std::string name, QWidget& parent, UserEvents& user, SheetSurface& sheet)
    : QAbstractScrollArea(&parent), name_(std::move(name)), user_(user), sheet_(sheet) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    late_.setSingleShot(true);
    connect(&late_, &QTimer::timeout, this, [this] { anotherSize(); });
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { tellScrolled(); });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { tellScrolled(); });
}

platform::CanvasSize CanvasView::canvasSize() const {
    const double ratio = viewport()->devicePixelRatioF();
    const platform::drawing::PixelsPerInch inch = realResolution(*screen());
    constexpr double usualDpi = 96;
    return {static_cast<int>(std::lround(viewport()->width() * ratio)),
            static_cast<int>(std::lround(viewport()->height() * ratio)), inch.across, inch.down,
            logicalDpiY() * ratio / usualDpi};
}

void CanvasView::invalidate() {
    valid_ = false;
    viewport()->update();
}

void CanvasView::setScrollBars(platform::ScrollBar across, platform::ScrollBar down) {
    setScrollBar(Qt::Horizontal, across);
    setScrollBar(Qt::Vertical, down);
}

void CanvasView::setScrollBar(Qt::Orientation orientation, const platform::ScrollBar& bar) {
    const bool across = orientation == Qt::Horizontal;
    QScrollBar& shown = *(across ? horizontalScrollBar() : verticalScrollBar());
    constexpr int stepsInPage = 10;
    shown.setRange(0, std::max(0, bar.whole - bar.page));
    shown.setPageStep(std::max(1, bar.page));
    shown.setSingleStep(std::max(1, bar.page / stepsInPage));
    shown.setValue(bar.position);
    const Qt::ScrollBarPolicy policy = bar.whole > bar.page ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
    if (across) {
        setHorizontalScrollBarPolicy(policy);
    } else {
        setVerticalScrollBarPolicy(policy);
    }
}

void CanvasView::tellScrolled() { user_.scrolled(name_, horizontalScrollBar()->value(), verticalScrollBar()->value()); }

void CanvasView::setShape(platform::Cursor cursor) { viewport()->setCursor(shapeOf(cursor)); }

void CanvasView::showEvent(QShowEvent* event) {
    QAbstractScrollArea::showEvent(event);
    if (const QWindow* native = window()->windowHandle()) {
        connect(native, &QWindow::screenChanged, this, &CanvasView::anotherSize, Qt::UniqueConnection);
    }
}

void CanvasView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        invalidate();
    }
}

// Scroll bars that come and go are the program's own doing, so the room with them is what counts.
void CanvasView::resizeEvent(QResizeEvent* /*event*/) {
    invalidate();
    if (std::exchange(outerSize_, size()) != size()) {
        anotherSize();
    }
}

void CanvasView::anotherSize() {
    constexpr int milliseconds = 10;
    invalidate();
    if (user_.busy()) {
        late_.start(milliseconds);
    } else {
        user_.resized(name_);
    }
}

void CanvasView::paintEvent(QPaintEvent* /*event*/) {
    const double ratio = viewport()->devicePixelRatioF();
    const platform::CanvasSize size = canvasSize();
    if (!valid_ || pixels_.size() != QSize(size.width, size.height)) {
        paintAnew();
    }
    QPainter painter(viewport());
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(0, 0, pixels_);
}

void CanvasView::paintAnew() {
    const platform::CanvasSize size = canvasSize();
    if (pixels_.size() != QSize(size.width, size.height)) {
        pixels_ = QImage(size.width, size.height, QImage::Format_RGB32);
    }
    if (pixels_.isNull()) {
        return;
    }
    pixels_.fill(palette().color(QPalette::Mid));
    // What is invalidated meanwhile is painted once more.
    valid_ = true;
    QFont shown = font();
    shown.setPixelSize(
        std::max(1, static_cast<int>(std::lround(QFontInfo(shown).pixelSize() * viewport()->devicePixelRatioF()))));
    ScreenCanvas canvas(pixels_, size, {shown, palette()}, sheet_);
    user_.paint(name_, canvas);
}

void CanvasView::tellPointer(const QMouseEvent& event, PointerAction action) {
    const PointerButton button = buttonOf(action == PointerAction::moved ? event.buttons() : event.button());
    if (action == PointerAction::moved || button != PointerButton::none) {
        const QPointF place = event.position() * viewport()->devicePixelRatioF();
        user_.pointed(name_, {action, button, place.x(), place.y(), event.modifiers().testFlag(Qt::ShiftModifier)});
    }
}

void CanvasView::mouseMoveEvent(QMouseEvent* event) { tellPointer(*event, PointerAction::moved); }

void CanvasView::mousePressEvent(QMouseEvent* event) { tellPointer(*event, PointerAction::pressed); }

void CanvasView::mouseDoubleClickEvent(QMouseEvent* event) { tellPointer(*event, PointerAction::doubleClicked); }

void CanvasView::mouseReleaseEvent(QMouseEvent* event) { tellPointer(*event, PointerAction::released); }

void CanvasView::wheelEvent(QWheelEvent* event) {
    constexpr double notch = 120;
    const QPoint turned = event->angleDelta();
    const bool across = std::abs(turned.x()) > std::abs(turned.y());
    const QPointF place = event->position() * viewport()->devicePixelRatioF();
    if (!turned.isNull()) {
        user_.wheeled(name_, {(across ? turned.x() : turned.y()) / notch, across,
                              event->modifiers().testFlag(Qt::ControlModifier), place.x(), place.y()});
    }
    event->accept();
}

// Keys are the form's.
void CanvasView::keyPressEvent(QKeyEvent* event) { event->ignore(); }

void CanvasView::contextMenuEvent(QContextMenuEvent* event) { event->ignore(); }

}  // namespace platform_linux::qt
