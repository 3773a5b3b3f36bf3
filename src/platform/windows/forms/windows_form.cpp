#include "platform/windows/forms/windows_form.h"

#include <commctrl.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "platform/windows/forms/form_frame.h"
#include "platform/windows/forms/kept_pointer.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"
#include "runtime/error.h"

namespace platform_windows::forms {

namespace {

using platform::ControlKind;

constexpr UINT closeNow = WM_APP;

// For as long as it lives a flag is set; what it was before comes back.
class Raised {
public:
    explicit Raised(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;
    ~Raised() { flag_ = before_; }

private:
    bool& flag_;
    bool before_;
};

// The width of the longest item, with some room at its end.
int widthOf(HWND list, const std::vector<std::wstring>& items) {
    const ScreenContext screen(::GetDC(nullptr));
    const HGDIOBJ before = ::SelectObject(screen.get(), keptPointer<HFONT>(::SendMessageW(list, WM_GETFONT, 0, 0)));
    LONG widest = 0;
    for (const std::wstring& item : items) {
        SIZE size{};
        ::GetTextExtentPoint32W(screen.get(), item.c_str(), static_cast<int>(item.size()), &size);
        widest = std::max(widest, size.cx);
    }
    ::SelectObject(screen.get(), before);
    return static_cast<int>(widest) + ::GetSystemMetrics(SM_CXVSCROLL) / 2;
}

// An item may only be passed on the way through an open list, and the one that was may be chosen.
bool isChoice(HWND list, unsigned notification) {
    return notification == CBN_SELENDOK ||
           (notification == CBN_SELCHANGE && ::SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) == FALSE);
}

bool isInput(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) || (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
           message == WM_NCLBUTTONDOWN || message == WM_SYSCOMMAND;
}

}  // namespace

WindowsForm::WindowsForm(const platform::FormDesign& design, platform::FormEvents& events, FormKeeper& keeper)
    : design_(design), events_(events), keeper_(keeper), font_(dialogFont()) {
    const std::vector<WORD> shape = dialogTemplate(design_, font_);
    // Filled in when the window is made.
    ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATEW>(shape.data()), nullptr,
                                 handle, reinterpret_cast<LPARAM>(this));
    if (!window_) {
        throw runtime::Error(runtime::errPermissionDenied, "das Fenster „" + design.title +
                                                               "“ lässt sich nicht öffnen; andere Programme beenden (" +
                                                               systemMessage(::GetLastError()) + ")");
    }
    silent_ = false;
}

WindowsForm::~WindowsForm() {
    silent_ = true;
    window_.reset();
}

INT_PTR CALLBACK WindowsForm::handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    if (message == WM_INITDIALOG) {
        ::SetWindowLongPtrW(window, DWLP_USER, second);
        keptPointer<WindowsForm*>(second)->created(window);
        return TRUE;
    }
    auto* const form = keptPointer<WindowsForm*>(::GetWindowLongPtrW(window, DWLP_USER));
    if (form == nullptr) {
        return FALSE;
    }
    switch (message) {
        case WM_COMMAND:
            form->commanded(LOWORD(first), HIWORD(first));
            return TRUE;
        case WM_CLOSE:
            form->commanded(IDCANCEL, BN_CLICKED);
            return TRUE;
        case closeNow:
            form->window_.reset();
            return TRUE;
        case WM_DESTROY:
            form->destroyed();
            return TRUE;
        default:
            return FALSE;
    }
}

void WindowsForm::created(HWND window) {
    *window_.receive() = window;
    for (std::size_t index = 0; index < design_.controls.size(); ++index) {
        Part& part =
            parts_.emplace_back(Part{design_.controls[index], ::GetDlgItem(window, numberOf(design_, index)), nullptr});
        if (part.control.kind == ControlKind::textBox) {
            part.filter = [this, &part](const std::wstring& text, wchar_t character) {
                bool taken = false;
                tell([&] { taken = events_.accepts(part.control.name, narrow(text), character); });
                return taken;
            };
            filterBox(part.window, part.filter);
        }
    }
    const auto icon = [](int width, int height) {
        return reinterpret_cast<LPARAM>(::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                                                     ::GetSystemMetrics(width), ::GetSystemMetrics(height), LR_SHARED));
    };
    ::SendMessageW(window, WM_SETICON, ICON_SMALL, icon(SM_CXSMICON, SM_CYSMICON));
    ::SendMessageW(window, WM_SETICON, ICON_BIG, icon(SM_CXICON, SM_CYICON));
    makeToolTips();
}

void WindowsForm::makeToolTips() {
    tips_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                              CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window_.get(), nullptr,
                              ::GetModuleHandleW(nullptr), nullptr);
    for (const Part& part : parts_) {
        std::wstring text = widen(part.control.tooltip);
        if (text.empty()) {
            continue;
        }
        TOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V1_SIZE;
        tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
        tool.hwnd = window_.get();
        tool.uId = reinterpret_cast<UINT_PTR>(part.window);
        tool.lpszText = text.data();
        ::SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

template <typename Event>
void WindowsForm::tell(const Event& event) noexcept {
    if (silent_) {
        return;
    }
    const Raised quiet(silent_);
    try {
        event();
    } catch (...) {
        keeper_.failed();
    }
}

void WindowsForm::commanded(int number, unsigned notification) {
    const auto part = std::find_if(parts_.begin(), parts_.end(),
                                   [&](const Part& known) { return ::GetDlgCtrlID(known.window) == number; });
    if (part == parts_.end() || ::IsWindowEnabled(part->window) == FALSE) {
        return;
    }
    const std::string& name = part->control.name;
    const ControlKind kind = part->control.kind;
    const bool ofBox = kind == ControlKind::textBox;
    const bool chosen = (kind == ControlKind::button && notification == BN_CLICKED) ||
                        (kind == ControlKind::listBox && notification == LBN_SELCHANGE) ||
                        (kind == ControlKind::dropDownList && isChoice(part->window, notification));
    if (chosen) {
        tell([&] { events_.clicked(name); });
    } else if (kind == ControlKind::listBox && notification == LBN_DBLCLK) {
        tell([&] { events_.doubleClicked(name); });
    } else if (ofBox && notification == EN_CHANGE) {
        tell([&] { events_.changed(name); });
    } else if (ofBox && notification == EN_SETFOCUS) {
        tell([&] { events_.focused(name); });
    }
}

void WindowsForm::destroyed() noexcept {
    keeper_.gone(*this);
    tell([this] { events_.closed(); });
}

void WindowsForm::show() {
    const Raised quiet(silent_);
    centre(window_.get());
    ::ShowWindow(window_.get(), SW_SHOWNORMAL);
    ::SetForegroundWindow(window_.get());
}

void WindowsForm::close() { ::PostMessageW(window_.get(), closeNow, 0, 0); }

void WindowsForm::setTitle(const std::string& title) { ::SetWindowTextW(window_.get(), widen(title).c_str()); }

void WindowsForm::setHeight(platform::FormHeight height) {
    const Raised quiet(silent_);
    for (const Part& part : parts_) {
        ::ShowWindow(part.window, part.control.place.y < height.visible ? SW_SHOWNA : SW_HIDE);
    }
    setFrameHeight(window_.get(), frameHeight(window_.get(), height, font_.pixels));
}

const WindowsForm::Part* WindowsForm::find(std::string_view name) const {
    const auto found =
        std::find_if(parts_.begin(), parts_.end(), [&](const Part& part) { return part.control.name == name; });
    return found != parts_.end() ? &*found : nullptr;
}

HWND WindowsForm::windowOf(std::string_view name) const {
    const Part* const part = find(name);
    return part != nullptr ? part->window : nullptr;
}

std::string WindowsForm::text(const std::string& control) const { return narrow(windowText(windowOf(control))); }

void WindowsForm::setText(const std::string& control, const std::string& text) {
    const Raised quiet(silent_);
    ::SetWindowTextW(windowOf(control), widen(text).c_str());
}

void WindowsForm::selectText(const std::string& control) { ::SendMessageW(windowOf(control), EM_SETSEL, 0, -1); }

void WindowsForm::setItems(const std::string& control, const std::vector<std::string>& items) {
    const Part* const part = find(control);
    if (part == nullptr) {
        return;
    }
    const Raised quiet(silent_);
    const bool dropsDown = part->control.kind == ControlKind::dropDownList;
    std::vector<std::wstring> texts;
    std::transform(items.begin(), items.end(), std::back_inserter(texts),
                   [](const std::string& item) { return widen(item); });
    ::SendMessageW(part->window, WM_SETREDRAW, FALSE, 0);
    ::SendMessageW(part->window, dropsDown ? CB_RESETCONTENT : LB_RESETCONTENT, 0, 0);
    for (const std::wstring& item : texts) {
        ::SendMessageW(part->window, dropsDown ? CB_ADDSTRING : LB_ADDSTRING, 0,
                       reinterpret_cast<LPARAM>(item.c_str()));
    }
    const auto width = static_cast<WPARAM>(widthOf(part->window, texts));
    ::SendMessageW(part->window, dropsDown ? CB_SETDROPPEDWIDTH : LB_SETHORIZONTALEXTENT, width, 0);
    ::SendMessageW(part->window, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(part->window, nullptr, TRUE);
}

int WindowsForm::selected(const std::string& control) const {
    const Part* const part = find(control);
    const bool dropsDown = part != nullptr && part->control.kind == ControlKind::dropDownList;
    return part == nullptr
               ? -1
               : static_cast<int>(::SendMessageW(part->window, dropsDown ? CB_GETCURSEL : LB_GETCURSEL, 0, 0));
}

void WindowsForm::select(const std::string& control, int index) {
    const Part* const part = find(control);
    if (part != nullptr) {
        const Raised quiet(silent_);
        const bool dropsDown = part->control.kind == ControlKind::dropDownList;
        ::SendMessageW(part->window, dropsDown ? CB_SETCURSEL : LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    }
}

void WindowsForm::setEnabled(const std::string& control, bool enabled) {
    const Raised quiet(silent_);
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

void WindowsForm::repaint() {
    const Raised quiet(silent_);
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == closeNow || message.message == WM_QUIT) {
            ::PostMessageW(message.hwnd, message.message, message.wParam, message.lParam);
            break;
        }
        if (!isInput(message.message)) {
            ::DispatchMessageW(&message);
        }
    }
    ::RedrawWindow(window_.get(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

}  // namespace platform_windows::forms
