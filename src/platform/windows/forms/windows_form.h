// One form, shown as a dialog of the system.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms.h"
#include "platform/windows/forms/canvas_window.h"
#include "platform/windows/forms/dialog_template.h"
#include "platform/windows/forms/event_teller.h"
#include "platform/windows/forms/filtered_box.h"
#include "platform/windows/forms/form_keeper.h"
#include "platform/windows/forms/form_layout.h"
#include "platform/windows/forms/seen_timer.h"
#include "platform/windows/forms/table_view.h"
#include "platform/windows/forms/text_view.h"
#include "platform/windows/forms/tool_button.h"
#include "platform/windows/handle.h"

namespace platform_windows::forms {

struct WindowKind {
    using Handle = HWND;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::DestroyWindow(handle); }
};
using Window = Owner<WindowKind>;

class WindowsForm final : public platform::Form {
public:
    // All but the design must outlive it; the owner may be null, and takes no input until this form is closed. Throws
    // runtime::Error where the system makes no window.
    WindowsForm(const platform::FormDesign& design, platform::FormEvents& events, FormKeeper& keeper, HWND owner);
    WindowsForm(const WindowsForm&) = delete;
    WindowsForm& operator=(const WindowsForm&) = delete;
    ~WindowsForm() override;

    HWND window() const noexcept { return window_.get(); }

    // Whether a message that is about to be dispatched was the form's, and is dealt with.
    bool takes(MSG& message);
    bool wantsIdle() const noexcept { return wantsIdle_; }
    void tellIdle() noexcept;

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
    void wantTimer(int milliseconds) override { timer_.start(window_.get(), milliseconds); }
    void wantIdle(bool want) override { wantsIdle_ = want; }
    platform::WindowPlace windowPlace() const override;
    void setWindowPlace(const platform::WindowPlace& place) override;
    void repaint() override;

private:
    struct Part {
        platform::Control control;
        HWND window = nullptr;
        CharacterFilter filter;
        std::unique_ptr<ToolButton> tool;
        std::unique_ptr<CanvasWindow> canvas;
        std::unique_ptr<TextView> view;
        std::unique_ptr<TableView> table;
    };

    static INT_PTR CALLBACK handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    bool answer(UINT message, WPARAM first, LPARAM second) noexcept;
    void created(HWND window);
    void made(Part& part);
    void filter(Part& part, HWND box);
    void arrange() const;
    void notified(NMHDR& notification) noexcept;
    void commanded(int number, unsigned notification) noexcept;
    void listMoved(const Part& part, unsigned notification);
    void leaveList(const Part& part);
    void chosen(const Part& part) noexcept;
    void entered() noexcept;
    bool takesShortcut(const MSG& message);
    bool takesWheel(const MSG& message);
    void screenChanged(UINT message) noexcept;
    void draw(const DRAWITEMSTRUCT& item) const;
    void destroyed() noexcept;
    void endWindow();

    const Part* find(std::string_view name) const;
    const Part* findByNumber(int number) const;
    const Part* focused() const;
    HWND windowOf(std::string_view name) const;
    CanvasWindow* canvasOf(std::string_view name) const;
    TableView* tableOf(std::string_view name) const;

    platform::FormDesign design_;
    EventTeller teller_;
    FormKeeper& keeper_;
    HWND owner_;
    DialogFont font_;
    std::list<Part> parts_;  // in the design's order
    FormLayout layout_;
    SeenTimer timer_;
    Window window_;
    HWND disabledWithFocus_ = nullptr;
    HWND firstFocus_ = nullptr;                   // once the form is shown
    std::optional<std::wstring> textBeforeList_;  // of the combo box whose list is open
    bool placed_ = false;
    bool maximized_ = false;  // once it is shown
    bool wantsIdle_ = false;
};

}  // namespace platform_windows::forms
