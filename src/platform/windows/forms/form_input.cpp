// What a form does with messages before they reach its controls.
#include <algorithm>

#include "platform/windows/forms/shortcut_keys.h"
#include "platform/windows/forms/windows_form.h"

namespace platform_windows::forms {

namespace {

using platform::ControlKind;

// Keys mean something to it that are no letters.
bool takesKeys(ControlKind kind) {
    switch (kind) {
        case ControlKind::textBox:
        case ControlKind::comboBox:
        case ControlKind::listBox:
        case ControlKind::dropDownList:
        case ControlKind::optionButton:
        case ControlKind::textView:
            return true;
        default:
            return false;
    }
}

}  // namespace

bool WindowsForm::takes(MSG& message) {
    const HWND form = window_.get();
    const bool isOwn = message.hwnd == form || ::IsChild(form, message.hwnd) != FALSE;
    return (isOwn && (takesShortcut(message) || takesWheel(message))) || ::IsDialogMessageW(form, &message) != FALSE;
}

bool WindowsForm::takesShortcut(const MSG& message) {
    const Part* const focus = focused();
    const bool inBox = focus != nullptr && takesKeys(focus->control.kind);
    const platform::Shortcut* const shortcut = shortcutOf(design_.shortcuts, message, inBox);
    if (shortcut == nullptr) {
        return false;
    }
    const HWND control = windowOf(shortcut->action);
    if (control == nullptr || ::IsWindowEnabled(control) != FALSE) {
        teller_.tell([&](platform::FormEvents& events) { events.clicked(shortcut->action); });
    }
    return true;
}

// What scrolls is scrolled wherever the focus is, as long as the pointer is over it.
bool WindowsForm::takesWheel(const MSG& message) {
    if (message.message != WM_MOUSEWHEEL && message.message != wheelAcross) {
        return false;
    }
    const HWND under = ::WindowFromPoint(message.pt);
    const bool scrolls = std::any_of(parts_.begin(), parts_.end(), [&](const Part& part) {
        return (part.canvas || part.table || part.view) && part.window == under;
    });
    if (scrolls) {
        ::SendMessageW(under, message.message, message.wParam, message.lParam);
    }
    return scrolls;
}

}  // namespace platform_windows::forms
