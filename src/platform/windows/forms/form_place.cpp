// Where a form lies, and its controls in it.
#include <utility>

#include "platform/windows/forms/form_frame.h"
#include "platform/windows/forms/windows_form.h"

namespace platform_windows::forms {

void WindowsForm::show() {
    const Raised quiet = teller_.silence();
    if (!placed_) {
        centre(window_.get());
    }
    ::ShowWindow(window_.get(), std::exchange(maximized_, false) ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
    if (firstFocus_ != nullptr) {
        ::SendMessageW(window_.get(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(std::exchange(firstFocus_, nullptr)),
                       TRUE);
    }
    ::SetForegroundWindow(window_.get());
}

void WindowsForm::arrange() const {
    layout_.arrange();
    for (const Part& part : parts_) {
        if (part.table) {
            part.table->fillWidth();
        }
    }
}

void WindowsForm::setHeight(platform::FormHeight height) {
    const Raised quiet = teller_.silence();
    for (const Part& part : parts_) {
        ::ShowWindow(part.window, part.control.place.y < height.visible ? SW_SHOWNA : SW_HIDE);
    }
    setFrameHeight(window_.get(), frameHeight(window_.get(), height, font_.pixels));
}

platform::WindowPlace WindowsForm::windowPlace() const {
    platform::WindowPlace place = placeOf(window_.get());
    place.maximized = place.maximized || maximized_;
    return place;
}

void WindowsForm::setWindowPlace(const platform::WindowPlace& place) {
    const Raised quiet = teller_.silence();
    const bool shown = ::IsWindowVisible(window_.get()) != FALSE;
    if (shown) {
        ::ShowWindow(window_.get(), SW_SHOWNORMAL);
    }
    moveTo(window_.get(), place, layout_.least());
    placed_ = true;
    maximized_ = !shown && place.maximized;
    if (shown && place.maximized) {
        ::ShowWindow(window_.get(), SW_SHOWMAXIMIZED);
    }
}

}  // namespace platform_windows::forms
