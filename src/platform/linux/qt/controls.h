// The kinds of controls, each by a widget of Qt.
#pragma once

#include <QString>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "platform/forms.h"
#include "platform/linux/qt/user_events.h"

namespace platform_linux::qt {

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
    // Puts the access key of a label on another control, and tells its text to screen readers as that one's name.
    virtual void nameOf(QWidget& /*named*/) {}
};

// The parent must outlive the control.
std::unique_ptr<ControlView> makeControl(const platform::Control& control, QWidget& parent, UserEvents& user);

}  // namespace platform_linux::qt
