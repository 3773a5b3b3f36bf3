// One form, shown as a dialog of the system.
#pragma once

#include <windows.h>

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms.h"
#include "platform/windows/forms/dialog_template.h"
#include "platform/windows/forms/filtered_box.h"
#include "platform/windows/handle.h"

namespace platform_windows::forms {

struct WindowKind {
    using Handle = HWND;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::DestroyWindow(handle); }
};
using Window = Owner<WindowKind>;

class WindowsForm;

// What the forms of a program have in common.
class FormKeeper {
public:
    virtual ~FormKeeper() = default;
    // The form is gone.
    virtual void gone(WindowsForm& form) noexcept = 0;
    // An exception is under way that an event has thrown.
    virtual void failed() noexcept = 0;
};

class WindowsForm final : public platform::Form {
public:
    // All but the design must outlive it. Throws runtime::Error where the system makes no window.
    WindowsForm(const platform::FormDesign& design, platform::FormEvents& events, FormKeeper& keeper);
    WindowsForm(const WindowsForm&) = delete;
    WindowsForm& operator=(const WindowsForm&) = delete;
    ~WindowsForm() override;

    HWND window() const noexcept { return window_.get(); }

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
    struct Part {
        platform::Control control;
        HWND window = nullptr;
        CharacterFilter filter;
    };

    static INT_PTR CALLBACK handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    void created(HWND window);
    void makeToolTips();
    void commanded(int number, unsigned notification);
    void destroyed() noexcept;

    const Part* find(std::string_view name) const;
    HWND windowOf(std::string_view name) const;
    template <typename Event>
    void tell(const Event& event) noexcept;

    platform::FormDesign design_;
    platform::FormEvents& events_;
    FormKeeper& keeper_;
    DialogFont font_;
    std::list<Part> parts_;  // in the design's order
    Window window_;
    HWND tips_ = nullptr;
    HWND disabledWithFocus_ = nullptr;
    bool silent_ = true;  // the program does something, and no user
};

}  // namespace platform_windows::forms
