#include "platform/linux/qt/qt_form.h"

#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace platform_linux::qt {

namespace {

// As long as it lives and filters, what the user does is lost instead of being done later.
class NoInput : public QObject {
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        return event->isInputEvent() || event->type() == QEvent::Close;
    }
};

}  // namespace

FormWindow::FormWindow(std::function<void()> cancel)
    // No dialog to the window manager, as such a one has no place in the task bar.
    : QDialog(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowCloseButtonHint),
      cancel_(std::move(cancel)) {}

void FormWindow::placeOnScreen() {
    const QWindow* active = QGuiApplication::focusWindow();
    const QScreen* place = active != nullptr ? active->screen() : QGuiApplication::screenAt(QCursor::pos());
    place = place != nullptr ? place : QGuiApplication::primaryScreen();
    if (place != nullptr) {
        QRect middle(QPoint(), size());
        middle.moveCenter(place->availableGeometry().center());
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

QtForm::QtForm(const platform::FormDesign& design, platform::FormEvents& events, OpenForms& forms)
    : forms_(forms),
      user_(
          events, [this](const std::exception_ptr& failure) { forms_.failed(failure); }, [this] { endIfClosing(); }),
      cancelButton_(design.cancelButton),
      window_([this] { pressCancel(); }),
      units_(window_.font(), window_.logicalDpiY()),
      width_(units_.across(design.width)) {
    const UserEvents::Call call(user_);
    QObject::connect(&closing_, &QTimer::timeout, &window_, [this] { endIfClosing(); });
    window_.setObjectName(QString::fromStdString(design.name));
    window_.setWindowTitle(QString::fromStdString(design.title));
    addControls(design);
}

QtForm::~QtForm() {
    const UserEvents::Call call(user_);
    forms_.ended(*this);
    window_.hide();
}

void QtForm::addControls(const platform::FormDesign& design) {
    ControlView* label = nullptr;
    int bottom = 0;
    for (const platform::Control& control : design.controls) {
        controls_.push_back({control.name, control.place.y, makeControl(control, window_, user_)});
        ControlView& view = *controls_.back().view;
        view.widget().setGeometry(units_.rectangle(control.place));
        if (label != nullptr && control.caption.empty()) {
            label->nameOf(view.widget());
        }
        label = control.kind == platform::ControlKind::label ? &view : nullptr;
        if (auto* button = qobject_cast<QPushButton*>(&view.widget())) {
            button->setDefault(control.name == design.defaultButton);
        }
        bottom = std::max(bottom, control.place.y + control.place.height);
    }
    window_.setFixedSize(width_, units_.down(bottom));
}

void QtForm::show() {
    const UserEvents::Call call(user_);
    const auto first = std::find_if(controls_.begin(), controls_.end(), [](const NamedControl& control) {
        return (control.view->widget().focusPolicy() & Qt::TabFocus) != 0;
    });
    if (first != controls_.end() && window_.focusWidget() == nullptr) {
        first->view->widget().setFocus();
    }
    open_ = true;
    forms_.opened(*this);
    window_.placeOnScreen();
    window_.show();
    window_.raise();
    window_.activateWindow();
    for (const NamedControl& control : controls_) {
        control.view->shown();
    }
}

// The end is an event, and so does not come inside of another one or of a call.
void QtForm::close() {
    constexpr int milliseconds = 20;
    if (open_) {
        closing_.start(milliseconds);
    }
}

void QtForm::endIfClosing() {
    if (closing_.isActive() && open_ && !user_.busy()) {
        closing_.stop();
        open_ = false;
        window_.hide();
        user_.closed();
        forms_.ended(*this);
    }
}

void QtForm::pressCancel() {
    ControlView* button = find(cancelButton_);
    if (button != nullptr && button->widget().isEnabled()) {
        user_.clicked(cancelButton_);
    }
}

void QtForm::setTitle(const std::string& title) { window_.setWindowTitle(QString::fromStdString(title)); }

void QtForm::setHeight(platform::FormHeight height) {
    const UserEvents::Call call(user_);
    for (const NamedControl& control : controls_) {
        control.view->widget().setVisible(control.top < height.visible);
    }
    window_.setFixedSize(width_, units_.height(height));
    window_.stayOnScreen();
}

ControlView* QtForm::find(const std::string& control) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [&](const NamedControl& known) { return known.name == control; });
    return found != controls_.end() ? found->view.get() : nullptr;
}

template <typename Function>
void QtForm::withControl(const std::string& control, Function function) {
    const UserEvents::Call call(user_);
    if (ControlView* view = find(control)) {
        function(*view);
    }
}

std::string QtForm::text(const std::string& control) const {
    const ControlView* view = find(control);
    return view != nullptr ? view->text().toStdString() : std::string();
}

void QtForm::setText(const std::string& control, const std::string& text) {
    withControl(control, [&](ControlView& view) { view.setText(QString::fromStdString(text)); });
}

void QtForm::selectText(const std::string& control) {
    withControl(control, [](ControlView& view) { view.selectText(); });
}

void QtForm::setItems(const std::string& control, const std::vector<std::string>& items) {
    withControl(control, [&](ControlView& view) { view.setItems(items); });
}

int QtForm::selected(const std::string& control) const {
    const ControlView* view = find(control);
    return view != nullptr ? view->selected() : -1;
}

void QtForm::select(const std::string& control, int index) {
    withControl(control, [&](ControlView& view) { view.select(index); });
}

// A button that is disabled while it works has the focus again afterwards, so that a key pressed twice does not press
// the button behind it.
void QtForm::setEnabled(const std::string& control, bool enabled) {
    withControl(control, [&](ControlView& view) {
        QWidget& widget = view.widget();
        if (!enabled && window_.focusWidget() == &widget) {
            lostFocus_ = &widget;
        }
        widget.setEnabled(enabled);
        if (enabled && lostFocus_ == &widget) {
            std::exchange(lostFocus_, nullptr)->setFocus();
        }
    });
}

void QtForm::setTabStop(const std::string& control, bool stop) {
    withControl(control,
                [&](ControlView& view) { view.widget().setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus); });
}

void QtForm::repaint() {
    const UserEvents::Call call(user_);
    NoInput noInput;
    QCoreApplication::instance()->installEventFilter(&noInput);
    QCoreApplication::processEvents();
}

}  // namespace platform_linux::qt
