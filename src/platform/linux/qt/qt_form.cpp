#include "platform/linux/qt/qt_form.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <utility>

#include "platform/linux/qt/canvas_view.h"
#include "platform/linux/qt/table_view.h"

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

QtForm::QtForm(const platform::FormDesign& design, platform::FormEvents& events, OpenForms& forms, SheetSurface& sheet,
               QtForm* owner)
    : forms_(forms),
      user_(
          events, [this](const std::exception_ptr& failure) { forms_.failed(failure); }, [this] { endIfClosing(); }),
      window_(design,
              {[this, cancel = design.cancelButton] { press(cancel); },
               [this](const std::string& action) { press(action); }},
              owner != nullptr ? &owner->window_ : nullptr),
      units_(window_.font(), window_.logicalDpiY()),
      width_(units_.across(design.width)),
      timer_(window_, [this] { user_.timer(); }) {
    const UserEvents::Call call(user_);
    QObject::connect(&closing_, &QTimer::timeout, &window_, [this] { endIfClosing(); });
    window_.setObjectName(QString::fromStdString(design.name));
    window_.setWindowTitle(QString::fromStdString(design.title));
    QObject::connect(&idle_, &QTimer::timeout, &window_, [this] { beIdle(); });
    addControls(design, sheet);
    groupOptions(design);
}

QtForm::~QtForm() {
    const UserEvents::Call call(user_);
    forms_.ended(*this);
    window_.hide();
}

void QtForm::addControls(const platform::FormDesign& design, SheetSurface& sheet) {
    const bool hasDefault = !design.defaultButton.empty();
    const Surroundings form{window_, user_, sheet, units_,
                            hasDefault ? TextBox::Enter::defaultButton : TextBox::Enter::clicks};
    ControlView* label = nullptr;
    int bottom = 0;
    for (const platform::Control& control : design.controls) {
        controls_.push_back({control.name, control.place.y, makeControl(control, form)});
        ControlView& view = *controls_.back().view;
        view.widget().setGeometry(units_.rectangle(control.place));
        window_.add(view.widget(), control.sizing);
        if (label != nullptr && control.caption.empty()) {
            label->nameOf(view.widget());
        } else if (control.caption.empty() && !control.tooltip.empty()) {
            view.widget().setAccessibleName(QString::fromStdString(control.tooltip));
        }
        label = control.kind == platform::ControlKind::label ? &view : nullptr;
        if (auto* button = qobject_cast<QPushButton*>(&view.widget())) {
            button->setAutoDefault(hasDefault);
            button->setDefault(control.name == design.defaultButton);
        }
        bottom = std::max(bottom, control.place.y + control.place.height);
    }
    const int height = units_.down(design.height > 0 ? design.height : bottom);
    window_.setDesigned({width_, height}, design.resizable);
}

// Those that follow each other are of one group.
void QtForm::groupOptions(const platform::FormDesign& design) {
    QButtonGroup* group = nullptr;
    for (std::size_t i = 0; i < design.controls.size(); ++i) {
        auto* option = qobject_cast<QRadioButton*>(&controls_[i].view->widget());
        if (option == nullptr) {
            group = nullptr;
            continue;
        }
        if (group == nullptr) {
            group = new QButtonGroup(&window_);  // which belongs to the window
        }
        group->addButton(option);
    }
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

// What the design gives an action that no control has is one, too.
void QtForm::press(const std::string& action) {
    ControlView* control = find(action);
    if (!action.empty() && (control == nullptr || control->widget().isEnabled())) {
        user_.clicked(action);
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

void QtForm::focus(const std::string& control) {
    withControl(control, [](ControlView& view) { view.widget().setFocus(); });
}

platform::CanvasSize QtForm::canvasSize(const std::string& control) const {
    ControlView* view = find(control);
    return view != nullptr && view->canvas() != nullptr ? view->canvas()->canvasSize() : platform::CanvasSize();
}

template <typename Function>
void QtForm::withCanvas(const std::string& control, Function function) {
    withControl(control, [&](ControlView& view) {
        if (CanvasView* canvas = view.canvas()) {
            function(*canvas);
        }
    });
}

void QtForm::invalidate(const std::string& control) {
    withCanvas(control, [](CanvasView& canvas) { canvas.invalidate(); });
}

void QtForm::setScrollBars(const std::string& control, platform::ScrollBar across, platform::ScrollBar down) {
    withCanvas(control, [&](CanvasView& canvas) { canvas.setScrollBars(across, down); });
}

void QtForm::setCursor(const std::string& control, platform::Cursor cursor) {
    withCanvas(control, [&](CanvasView& canvas) { canvas.setShape(cursor); });
}

void QtForm::setRowCount(const std::string& table, int count) {
    withControl(table, [&](ControlView& view) {
        if (TableView* rows = view.table()) {
            rows->setRowCount(count);
        }
    });
}

std::vector<int> QtForm::selectedRows(const std::string& table) const {
    ControlView* view = find(table);
    return view != nullptr && view->table() != nullptr ? view->table()->selectedRows() : std::vector<int>();
}

void QtForm::selectRows(const std::string& table, const std::vector<int>& rows, bool show) {
    withControl(table, [&](ControlView& view) {
        if (TableView* shown = view.table()) {
            shown->selectRows(rows, show);
        }
    });
}

void QtForm::wantIdle(bool want) {
    if (!want) {
        idle_.stop();
    } else if (!idle_.isActive()) {
        idle_.start(0);
    }
}

// While an event waits for the user, in a box that it shows, there is nothing to be done, and no core is to be taken.
void QtForm::beIdle() {
    constexpr int rest = 20;  // milliseconds
    idle_.setInterval(user_.busy() ? rest : 0);
    if (open_) {
        user_.idle();
    }
}

void QtForm::setWindowPlace(const platform::WindowPlace& place) {
    const UserEvents::Call call(user_);
    window_.setPlace(place);
}

void QtForm::repaint() {
    const UserEvents::Call call(user_);
    NoInput noInput;
    QCoreApplication::instance()->installEventFilter(&noInput);
    QCoreApplication::processEvents();
}

}  // namespace platform_linux::qt
