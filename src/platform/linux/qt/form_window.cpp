#include "platform/linux/qt/form_window.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QCursor>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTableView>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/linux/qt/shortcut_keys.h"

namespace platform_linux::qt {

namespace {

Qt::WindowFlags flagsOf(const platform::FormDesign& design) {
    // No dialog to the window manager, as such a one has no place in the task bar.
    const Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                  Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    return design.resizable ? flags | Qt::WindowMinMaxButtonsHint : flags;
}

bool isBox(const QWidget* widget) {
    const bool isList =
        qobject_cast<const QAbstractItemView*>(widget) != nullptr && qobject_cast<const QTableView*>(widget) == nullptr;
    return isList || qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QComboBox*>(widget) != nullptr || qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
}

}  // namespace

FormWindow::FormWindow(const platform::FormDesign& design, Handlers handlers, QWidget* owner)
    : QDialog(owner, flagsOf(design)), handlers_(std::move(handlers)), shortcuts_(design.shortcuts) {
    if (owner != nullptr) {
        setWindowModality(Qt::WindowModal);
    }
    if (!shortcuts_.empty()) {
        QCoreApplication::instance()->installEventFilter(this);
    }
}

FormWindow::~FormWindow() {
    for (QObject* child : QObjectList(children())) {
        if (auto* owned = dynamic_cast<FormWindow*>(child)) {
            owned->setParent(nullptr);
        }
    }
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
    const auto* widget = event->type() == QEvent::KeyPress ? qobject_cast<QWidget*>(watched) : nullptr;
    if (widget == nullptr || widget->window() != this) {
        return false;
    }
    const platform::Shortcut* pressed =
        shortcutOf(shortcuts_, static_cast<const QKeyEvent&>(*event), isBox(focusWidget()));
    if (pressed != nullptr) {
        handlers_.shortcut(pressed->action);
    }
    return pressed != nullptr;
}

void FormWindow::setDesigned(QSize size, bool resizable) {
    designed_ = size;
    if (!resizable) {
        setFixedSize(size);
        return;
    }
    setMinimumSize(size.boundedTo(screen()->availableSize()));
    resize(size);
}

void FormWindow::add(QWidget& widget, platform::Sizing sizing) {
    if (sizing != platform::Sizing::fixed) {
        moving_.push_back({&widget, widget.geometry(), sizing});
    }
}

void FormWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (designed_.isEmpty()) {
        return;
    }
    const QSize more = size() - designed_;
    for (const Moving& moving : moving_) {
        const bool fills = moving.sizing == platform::Sizing::fill;
        const bool grows = moving.sizing != platform::Sizing::bottom;
        const QRect& was = moving.designed;
        moving.widget->setGeometry(was.x(), was.y() + (fills ? 0 : more.height()),
                                   std::max(0, was.width() + (grows ? more.width() : 0)),
                                   std::max(0, was.height() + (fills ? more.height() : 0)));
    }
}

void FormWindow::placeOnScreen() {
    constexpr double shareOfScreen = 0.85;  // of a form that can be made larger
    if (placed_) {
        return;
    }
    const QWindow* active = QGuiApplication::focusWindow();
    const QScreen* place = active != nullptr ? active->screen() : QGuiApplication::screenAt(QCursor::pos());
    place = place != nullptr ? place : QGuiApplication::primaryScreen();
    if (place != nullptr) {
        const QRect room = place->availableGeometry();
        if (minimumSize() != maximumSize()) {
            resize((room.size() * shareOfScreen).expandedTo(minimumSize()));
        }
        QRect middle(QPoint(), size());
        middle.moveCenter(parentWidget() != nullptr ? parentWidget()->geometry().center() : room.center());
        move(middle.topLeft());
    }
}

void FormWindow::stayOnScreen() {
    const QRect room = screen()->availableGeometry();
    const QRect frame = frameGeometry();
    if (isVisible() && frame.bottom() > room.bottom()) {
        move(frame.x(), std::max(room.top(), room.bottom() + 1 - frame.height()));
    }
}

platform::WindowPlace FormWindow::place() const {
    const bool large = isMaximized() && normalGeometry().isValid();
    const QRect room = large ? normalGeometry() : geometry();
    return {room.x(), room.y(), room.width(), room.height(), isMaximized()};
}

void FormWindow::setPlace(const platform::WindowPlace& place) {
    if (place.width <= 0 || place.height <= 0) {
        return;
    }
    QRect room(place.x, place.y, place.width, place.height);
    const QScreen* on = QGuiApplication::screenAt(room.center());
    if (on == nullptr) {
        on = QGuiApplication::primaryScreen();
    }
    const QRect whole = on->availableGeometry();
    room.setSize(room.size().boundedTo(whole.size()).expandedTo(minimumSize()));
    room.moveLeft(std::max(whole.left(), std::min(room.left(), whole.right() + 1 - room.width())));
    room.moveTop(std::max(whole.top(), std::min(room.top(), whole.bottom() + 1 - room.height())));
    placed_ = true;
    setGeometry(room);
    setWindowState(place.maximized ? Qt::WindowMaximized : Qt::WindowNoState);
}

}  // namespace platform_linux::qt
