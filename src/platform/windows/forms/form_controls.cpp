// What the program asks of a form's controls.
#include <algorithm>

#include "platform/windows/forms/filtered_box.h"
#include "platform/windows/forms/item_list.h"
#include "platform/windows/forms/windows_form.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

using platform::ControlKind;

const WindowsForm::Part* WindowsForm::find(std::string_view name) const {
    const auto found =
        std::find_if(parts_.begin(), parts_.end(), [&](const Part& part) { return part.control.name == name; });
    return found != parts_.end() ? &*found : nullptr;
}

const WindowsForm::Part* WindowsForm::findByNumber(int number) const {
    const auto found = std::find_if(parts_.begin(), parts_.end(),
                                    [&](const Part& part) { return ::GetDlgCtrlID(part.window) == number; });
    return found != parts_.end() ? &*found : nullptr;
}

// The control with the focus, also where it is a window inside of it that has it.
const WindowsForm::Part* WindowsForm::focused() const {
    const HWND focus = ::GetFocus();
    const auto found = std::find_if(parts_.begin(), parts_.end(), [&](const Part& part) {
        return part.window == focus || (focus != nullptr && part.window == ::GetParent(focus));
    });
    return found != parts_.end() ? &*found : nullptr;
}

HWND WindowsForm::windowOf(std::string_view name) const {
    const Part* const part = find(name);
    return part != nullptr ? part->window : nullptr;
}

CanvasWindow* WindowsForm::canvasOf(std::string_view name) const {
    const Part* const part = find(name);
    return part != nullptr ? part->canvas.get() : nullptr;
}

TableView* WindowsForm::tableOf(std::string_view name) const {
    const Part* const part = find(name);
    return part != nullptr ? part->table.get() : nullptr;
}

std::string WindowsForm::text(const std::string& control) const {
    const Part* const part = find(control);
    std::string text = part != nullptr ? narrow(windowText(part->window)) : std::string();
    if (part != nullptr && part->view) {
        std::erase(text, '\r');
    }
    return text;
}

void WindowsForm::setText(const std::string& control, const std::string& text) {
    const Part* const part = find(control);
    if (part != nullptr) {
        const Raised quiet = teller_.silence();
        ::SetWindowTextW(part->window, widen(part->view ? withLineEnds(text) : text).c_str());
    }
}

void WindowsForm::selectText(const std::string& control) {
    const Part* const part = find(control);
    if (part != nullptr && part->control.kind == ControlKind::comboBox) {
        ::SendMessageW(part->window, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
    } else if (part != nullptr) {
        ::SendMessageW(part->window, EM_SETSEL, 0, -1);
    }
}

void WindowsForm::setItems(const std::string& control, const std::vector<std::string>& items) {
    const Part* const part = find(control);
    if (part != nullptr) {
        const Raised quiet = teller_.silence();
        setListItems(part->window, part->control.kind, items);
    }
}

int WindowsForm::selected(const std::string& control) const {
    const Part* const part = find(control);
    return part == nullptr ? -1 : selectedItem(part->window, part->control.kind);
}

void WindowsForm::select(const std::string& control, int index) {
    const Part* const part = find(control);
    if (part != nullptr) {
        const Raised quiet = teller_.silence();
        selectItem(part->window, part->control.kind, index);
    }
}

void WindowsForm::setEnabled(const std::string& control, bool enabled) {
    const Raised quiet = teller_.silence();
    const HWND window = windowOf(control);
    // The focus does not stay where nothing can be done, and comes back.
    if (!enabled && ::GetFocus() == window) {
        ::SendMessageW(window_.get(), WM_NEXTDLGCTL, 0, FALSE);
        disabledWithFocus_ = window;
    }
    ::EnableWindow(window, enabled ? TRUE : FALSE);
    if (enabled && disabledWithFocus_ == window) {
        ::SendMessageW(window_.get(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
        disabledWithFocus_ = nullptr;
    }
}

void WindowsForm::setTabStop(const std::string& control, bool stop) {
    const HWND window = windowOf(control);
    const LONG style = ::GetWindowLongW(window, GWL_STYLE);
    ::SetWindowLongW(window, GWL_STYLE, stop ? style | WS_TABSTOP : style & ~static_cast<LONG>(WS_TABSTOP));
}

void WindowsForm::focus(const std::string& control) {
    const Raised quiet = teller_.silence();
    const HWND window = windowOf(control);
    if (window == nullptr) {
        return;
    }
    if (::IsWindowVisible(window_.get()) == FALSE) {
        firstFocus_ = window;
    } else {
        ::SendMessageW(window_.get(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
    }
}

platform::CanvasSize WindowsForm::canvasSize(const std::string& control) const {
    const CanvasWindow* const canvas = canvasOf(control);
    return canvas != nullptr ? canvas->size() : platform::CanvasSize{};
}

void WindowsForm::invalidate(const std::string& control) {
    if (CanvasWindow* const canvas = canvasOf(control)) {
        canvas->invalidate();
    }
}

void WindowsForm::setScrollBars(const std::string& control, platform::ScrollBar across, platform::ScrollBar down) {
    const Raised quiet = teller_.silence();
    if (CanvasWindow* const canvas = canvasOf(control)) {
        canvas->setScrollBars(across, down);
    }
}

void WindowsForm::setCursor(const std::string& control, platform::Cursor cursor) {
    if (CanvasWindow* const canvas = canvasOf(control)) {
        canvas->setCursor(cursor);
    }
}

void WindowsForm::setRowCount(const std::string& table, int count) {
    if (TableView* const view = tableOf(table)) {
        view->setRowCount(count);
    }
}

std::vector<int> WindowsForm::selectedRows(const std::string& table) const {
    const TableView* const view = tableOf(table);
    return view != nullptr ? view->selectedRows() : std::vector<int>();
}

void WindowsForm::selectRows(const std::string& table, const std::vector<int>& rows, bool show) {
    if (TableView* const view = tableOf(table)) {
        view->selectRows(rows, show);
    }
}

}  // namespace platform_windows::forms
