// A form as a dialog of Qt.
#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/forms.h"
#include "platform/linux/qt/controls.h"
#include "platform/linux/qt/dialog_units.h"
#include "platform/linux/qt/open_forms.h"
#include "platform/linux/qt/user_events.h"

namespace platform_linux::qt {

// A dialog that does not decide itself what Esc and the frame's closing mean.
class FormWindow : public QDialog {
public:
    explicit FormWindow(std::function<void()> cancel);
    void reject() override { cancel_(); }

    // In the middle of the screen that the user works on.
    void placeOnScreen();
    // Moves up what has grown beyond the screen.
    void stayOnScreen();

private:
    std::function<void()> cancel_;
};

class QtForm final : public platform::Form {
public:
    QtForm(const platform::FormDesign& design, platform::FormEvents& events, OpenForms& forms);
    QtForm(const QtForm&) = delete;
    QtForm& operator=(const QtForm&) = delete;
    ~QtForm() override;

    void show() override;
    void close() override;
    void setTitle(const std::string& title) override;
    void setHeight(platform::FormHeight height) override;
    std::string text(const std::string& control) const override;
    void setText(const std::string& control, const std::string& text) override;
    void selectText(const std::string& control) override;
    void setItems(const std::string& control, const std::vector<std::string>& items) override;
    int selected(const std::string& control) const override;
    void select(const std::string& control, int index) override;
    void setEnabled(const std::string& control, bool enabled) override;
    void setTabStop(const std::string& control, bool stop) override;
    void repaint() override;

private:
    struct NamedControl {
        std::string name;
        int top = 0;  // in dialog units
        std::unique_ptr<ControlView> view;
    };

    void addControls(const platform::FormDesign& design);
    void pressCancel();
    void endIfClosing();
    ControlView* find(const std::string& control) const;
    template <typename Function>
    void withControl(const std::string& control, Function function);

    OpenForms& forms_;
    UserEvents user_;
    std::string cancelButton_;
    FormWindow window_;
    DialogUnits units_;
    int width_;
    std::vector<NamedControl> controls_;
    QWidget* lostFocus_ = nullptr;  // the control that had the focus until it was disabled
    bool open_ = false;
    QTimer closing_;  // runs from close() until the form could end
};

}  // namespace platform_linux::qt
