#include "platform/windows/forms/windows_form.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "platform/windows/forms/item_list.h"
#include "platform/windows/forms/kept_pointer.h"
#include "platform/windows/forms/tool_tips.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"
#include "runtime/error.h"

namespace platform_windows::forms {

namespace {

using platform::ControlKind;
using platform::FormEvents;

constexpr UINT closeNow = WM_APP;
// An item of a combo box was chosen, which by now stands in it; first is the control's number.
constexpr UINT itemStands = WM_APP + 1;
// The list of a combo box was closed without a choice.
constexpr UINT listLeft = WM_APP + 2;

bool isInput(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) || (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
           message == wheelAcross || message == WM_NCLBUTTONDOWN || message == WM_SYSCOMMAND;
}

void setIcons(HWND window) {
    const auto icon = [](int width, int height) {
        return reinterpret_cast<LPARAM>(::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                                                     ::GetSystemMetrics(width), ::GetSystemMetrics(height), LR_SHARED));
    };
    ::SendMessageW(window, WM_SETICON, ICON_SMALL, icon(SM_CXSMICON, SM_CYSMICON));
    ::SendMessageW(window, WM_SETICON, ICON_BIG, icon(SM_CXICON, SM_CYICON));
}

}  // namespace

WindowsForm::WindowsForm(const platform::FormDesign& design, FormEvents& events, FormKeeper& keeper, HWND owner)
    : design_(design), teller_(events, keeper), keeper_(keeper), owner_(owner), font_(dialogFont()) {
    const Raised quiet = teller_.silence();
    const std::vector<WORD> shape = dialogTemplate(design_, font_);
    // Filled in when the window is made.
    ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATEW>(shape.data()), owner,
                                 handle, reinterpret_cast<LPARAM>(this));
    if (!window_) {
        throw runtime::Error(runtime::errPermissionDenied, "das Fenster „" + design.title +
                                                               "“ lässt sich nicht öffnen; andere Programme beenden (" +
                                                               systemMessage(::GetLastError()) + ")");
    }
    if (owner_ != nullptr) {
        ::EnableWindow(owner_, FALSE);
    }
}

WindowsForm::~WindowsForm() {
    teller_.end();
    endWindow();
}

void WindowsForm::endWindow() {
    // Before: otherwise the system would have no window of the program to go on with, and take another program's.
    if (owner_ != nullptr) {
        ::EnableWindow(std::exchange(owner_, nullptr), TRUE);
    }
    window_.reset();
}

INT_PTR CALLBACK WindowsForm::handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    if (message == WM_INITDIALOG) {
        ::SetWindowLongPtrW(window, DWLP_USER, second);
        keptPointer<WindowsForm*>(second)->created(window);
        return TRUE;
    }
    auto* const form = keptPointer<WindowsForm*>(::GetWindowLongPtrW(window, DWLP_USER));
    return form != nullptr && form->answer(message, first, second) ? TRUE : FALSE;
}

bool WindowsForm::answer(UINT message, WPARAM first, LPARAM second) noexcept {
    switch (message) {
        case WM_COMMAND:
            commanded(LOWORD(first), HIWORD(first));
            return true;
        case WM_NOTIFY:
            notified(*keptPointer<NMHDR*>(second));
            return true;
        case WM_CLOSE:
            commanded(IDCANCEL, BN_CLICKED);
            return true;
        case WM_DRAWITEM:
            draw(*keptPointer<const DRAWITEMSTRUCT*>(second));
            return true;
        case WM_SIZE:
            if (design_.resizable && first != SIZE_MINIMIZED) {
                arrange();
            }
            return true;
        case WM_GETMINMAXINFO:
            if (design_.resizable) {
                const SIZE least = layout_.least();
                keptPointer<MINMAXINFO*>(second)->ptMinTrackSize = {least.cx, least.cy};
            }
            return true;
        case WM_WINDOWPOSCHANGED:
            timer_.windowChanged(window_.get());
            return false;
        case WM_TIMER:
            if (timer_.isRunning()) {
                teller_.tell([](FormEvents& events) { events.timer(); });
            }
            return true;
        case WM_DISPLAYCHANGE:
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
            screenChanged(message);
            return false;
        case itemStands:
            if (const Part* const part = findByNumber(static_cast<int>(first))) {
                chosen(*part);
            }
            return true;
        case listLeft:
            if (const Part* const part = findByNumber(static_cast<int>(first))) {
                leaveList(*part);
            }
            return true;
        case TableView::selectionMoved:
            if (const Part* const part = findByNumber(static_cast<int>(first)); part != nullptr && part->table) {
                part->table->tellSelection();
            }
            return true;
        case closeNow:
            endWindow();
            return true;
        case WM_DESTROY:
            destroyed();
            return true;
        default:
            return false;
    }
}

void WindowsForm::created(HWND window) {
    window_ = Window(window);
    layout_ = FormLayout(window, design_.width, design_.height);
    const HWND tips = makeToolTips(window);
    for (std::size_t index = 0; index < design_.controls.size(); ++index) {
        const HWND child = ::GetDlgItem(window, numberOf(design_, index));
        Part& part = parts_.emplace_back();
        part.control = design_.controls[index];
        part.window = child;
        made(part);
        addToolTip(tips, child, part.control.tooltip);
    }
    setIcons(window);
}

void WindowsForm::made(Part& part) {
    layout_.add(part.window, part.control);
    switch (part.control.kind) {
        case ControlKind::textBox:
            filter(part, part.window);
            break;
        case ControlKind::comboBox:
            filter(part, ::GetWindow(part.window, GW_CHILD));
            break;
        case ControlKind::toolButton:
            part.tool = std::make_unique<ToolButton>(part.window, part.control.symbol);
            break;
        case ControlKind::canvas:
            part.canvas = std::make_unique<CanvasWindow>(part.window, part.control.name, teller_);
            break;
        case ControlKind::textView:
            part.view = std::make_unique<TextView>(part.window, font_.pixels);
            break;
        case ControlKind::table:
            part.table = std::make_unique<TableView>(part.window, part.control, teller_);
            break;
        default:
            break;
    }
}

void WindowsForm::filter(Part& part, HWND box) {
    part.filter = [this, &part](const std::wstring& text, wchar_t character) {
        bool taken = false;
        teller_.tell([&](FormEvents& events) { taken = events.accepts(part.control.name, narrow(text), character); });
        return taken;
    };
    filterBox(box, part.filter);
}

void WindowsForm::notified(NMHDR& notification) noexcept {
    const auto part = std::find_if(parts_.begin(), parts_.end(),
                                   [&](const Part& known) { return known.window == notification.hwndFrom; });
    const LRESULT result = part != parts_.end() && part->table ? part->table->answer(notification) : 0;
    ::SetWindowLongPtrW(window_.get(), DWLP_MSGRESULT, result);
}

void WindowsForm::commanded(int number, unsigned notification) noexcept {
    const Part* const part = findByNumber(number);
    if (part == nullptr) {
        if (number == IDOK) {
            entered();
        }
        return;
    }
    if (::IsWindowEnabled(part->window) == FALSE) {
        return;
    }
    const std::string& name = part->control.name;
    const ControlKind kind = part->control.kind;
    const bool isText = kind == ControlKind::textBox;
    const bool isCombo = kind == ControlKind::comboBox;
    if (isCombo) {
        listMoved(*part, notification);
    }
    if (isChoice(part->window, kind, notification)) {
        if (isCombo) {
            ::PostMessageW(window_.get(), itemStands, static_cast<WPARAM>(number), 0);
        } else {
            chosen(*part);
        }
    } else if (kind == ControlKind::listBox && notification == LBN_DBLCLK) {
        teller_.tell([&](FormEvents& events) { events.doubleClicked(name); });
    } else if ((isText && notification == EN_CHANGE) || (isCombo && notification == CBN_EDITCHANGE)) {
        teller_.tell([&](FormEvents& events) { events.changed(name); });
    } else if ((isText && notification == EN_SETFOCUS) || (isCombo && notification == CBN_SETFOCUS)) {
        teller_.tell([&](FormEvents& events) { events.focused(name); });
    }
}

// What an open list only passes appears in the box at once, behind each notification.
void WindowsForm::listMoved(const Part& part, unsigned notification) {
    if (notification == CBN_DROPDOWN || (notification == CBN_EDITCHANGE && textBeforeList_)) {
        textBeforeList_ = windowText(part.window);
    } else if (notification == CBN_SELENDOK) {
        textBeforeList_.reset();
    } else if (notification == CBN_SELENDCANCEL && textBeforeList_) {
        ::PostMessageW(window_.get(), listLeft, static_cast<WPARAM>(::GetDlgCtrlID(part.window)), 0);
    }
}

void WindowsForm::leaveList(const Part& part) {
    const std::wstring text = std::exchange(textBeforeList_, std::nullopt).value_or(windowText(part.window));
    const Raised quiet = teller_.silence();
    const LRESULT item = ::SendMessageW(part.window, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                        reinterpret_cast<LPARAM>(text.c_str()));
    ::SendMessageW(part.window, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    ::SetWindowTextW(part.window, text.c_str());
}

void WindowsForm::chosen(const Part& part) noexcept {
    teller_.tell([&](FormEvents& events) { events.clicked(part.control.name); });
}

// Enter, in a form that has no button for it.
void WindowsForm::entered() noexcept {
    const Part* const part = focused();
    if (part != nullptr &&
        (part->control.kind == ControlKind::textBox || part->control.kind == ControlKind::comboBox)) {
        chosen(*part);
    }
}

void WindowsForm::draw(const DRAWITEMSTRUCT& item) const {
    const auto part =
        std::find_if(parts_.begin(), parts_.end(), [&](const Part& known) { return known.window == item.hwndItem; });
    if (part != parts_.end() && part->tool) {
        part->tool->draw(item.hDC);
    }
}

void WindowsForm::screenChanged(UINT message) noexcept {
    for (const Part& part : parts_) {
        if (part.canvas) {
            part.canvas->invalidate();
            if (message == WM_DISPLAYCHANGE) {
                part.canvas->announceSize();
            }
        } else if (part.table && message == WM_SYSCOLORCHANGE) {
            ::SendMessageW(part.window, message, 0, 0);  // it hears it from its form only
        }
    }
}

void WindowsForm::destroyed() noexcept {
    keeper_.gone(*this);
    teller_.tell([](FormEvents& events) { events.closed(); });
    teller_.end();
}

void WindowsForm::tellIdle() noexcept {
    teller_.tell([](FormEvents& events) { events.idle(); });
}

void WindowsForm::close() { ::PostMessageW(window_.get(), closeNow, 0, 0); }

void WindowsForm::setTitle(const std::string& title) { ::SetWindowTextW(window_.get(), widen(title).c_str()); }

void WindowsForm::repaint() {
    const Raised quiet = teller_.silence();
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
