// The window of a form, and where its controls are.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "platform/form_design.h"

namespace platform_linux::qt {

// A dialog that does not decide itself what Esc, the frame's closing and the form's keys mean.
class FormWindow : public QDialog {
public:
    struct Handlers {
        std::function<void()> cancel;
        std::function<void(const std::string& action)> shortcut;
    };

    // The owner, where there is one, takes no input as long as the window is open.
    FormWindow(const platform::FormDesign& design, Handlers handlers, QWidget* owner);
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;
    // Windows that it owns live on without it.
    ~FormWindow() override;

    void reject() override { handlers_.cancel(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

    // The size that was designed; what the design lets grow does so with the window.
    void setDesigned(QSize size, bool resizable);
    void add(QWidget& widget, platform::Sizing sizing);

    // In the middle of the screen that the user works on, or where setPlace() has moved it.
    void placeOnScreen();
    // Moves up what has grown beyond the screen.
    void stayOnScreen();
    platform::WindowPlace place() const;
    void setPlace(const platform::WindowPlace& place);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Moving {
        QWidget* widget = nullptr;
        QRect designed;
        platform::Sizing sizing = platform::Sizing::fixed;
    };

    Handlers handlers_;
    std::vector<platform::Shortcut> shortcuts_;
    QSize designed_;
    std::vector<Moving> moving_;
    bool placed_ = false;
};

}  // namespace platform_linux::qt
