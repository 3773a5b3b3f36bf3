// A form as a dialog of Qt.
#pragma once

#include <QButtonGroup>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "platform/forms.h"
#include "platform/linux/qt/controls.h"
#include "platform/linux/qt/dialog_units.h"
#include "platform/linux/qt/form_window.h"
#include "platform/linux/qt/open_forms.h"
#include "platform/linux/qt/seen_timer.h"
#include "platform/linux/qt/user_events.h"

namespace platform_linux::qt {

class QtForm final : public platform::Form {
public:
    QtForm(const platform::FormDesign& design, platform::FormEvents& events, OpenForms& forms, SheetSurface& sheet,
           QtForm* owner);
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
    void focus(const std::string& control) override;
    platform::CanvasSize canvasSize(const std::string& control) const override;
    void invalidate(const std::string& control) override;
    void setScrollBars(const std::string& control, platform::ScrollBar across, platform::ScrollBar down) override;
    void setCursor(const std::string& control, platform::Cursor cursor) override;
    void setRowCount(const std::string& table, int count) override;
    std::vector<int> selectedRows(const std::string& table) const override;
    void selectRows(const std::string& table, const std::vector<int>& rows, bool show) override;
    void wantTimer(int milliseconds) override { timer_.want(milliseconds); }
    void wantIdle(bool want) override;
    platform::WindowPlace windowPlace() const override { return window_.place(); }
    void setWindowPlace(const platform::WindowPlace& place) override;
    void repaint() override;

    QWidget& window() { return window_; }

private:
    struct NamedControl {
        std::string name;
        int top = 0;  // in dialog units
        std::unique_ptr<ControlView> view;
    };

    void addControls(const platform::FormDesign& design, SheetSurface& sheet);
    void groupOptions(const platform::FormDesign& design);
    void press(const std::string& action);
    void beIdle();
    void endIfClosing();
    ControlView* find(const std::string& control) const;
    template <typename Function>
    void withControl(const std::string& control, Function function);
    template <typename Function>
    void withCanvas(const std::string& control, Function function);

    OpenForms& forms_;
    UserEvents user_;
    FormWindow window_;
    DialogUnits units_;
    int width_;
    std::vector<NamedControl> controls_;
    QWidget* lostFocus_ = nullptr;  // the control that had the focus until it was disabled
    QTimer idle_;
    SeenTimer timer_;
    bool open_ = false;
    QTimer closing_;  // runs from close() until the form could end
};

}  // namespace platform_linux::qt
