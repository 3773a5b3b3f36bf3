// The kinds of controls, each by a widget of Qt.
#pragma once

#include <QString>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "platform/forms.h"
#include "platform/linux/qt/dialog_units.h"
#include "platform/linux/qt/sheet_surface.h"
#include "platform/linux/qt/text_box.h"
#include "platform/linux/qt/user_events.h"

namespace platform_linux::qt {

class CanvasView;
class TableView;

// One control of a form. What a kind does not have does nothing.
class ControlView {
public:
    virtual ~ControlView() = default;

    virtual QWidget& widget() = 0;
    virtual QString text() const { return {}; }
    virtual void setText(const QString& /*text*/) {}
    virtual void selectText() {}
    virtual void setItems(const std::vector<std::string>& /*items*/) {}
    virtual int selected() const { return -1; }
    virtual void select(int /*index*/) {}
    // The widget has got its size and appears.
    virtual void shown() {}
    virtual CanvasView* canvas() { return nullptr; }
    virtual TableView* table() { return nullptr; }
    // Puts the access key of a label on another control, and tells its text to screen readers as that one's name.
    virtual void nameOf(QWidget& /*named*/) {}
};

// What the controls of a form have in common, and must not outlive.
struct Surroundings {
    QWidget& parent;
    UserEvents& user;
    SheetSurface& sheet;
    const DialogUnits& units;
    TextBox::Enter enter;  // in boxes
};

std::unique_ptr<ControlView> makeControl(const platform::Control& control, const Surroundings& form);

}  // namespace platform_linux::qt
