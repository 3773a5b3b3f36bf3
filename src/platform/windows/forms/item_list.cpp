#include "platform/windows/forms/item_list.h"

#include <algorithm>
#include <iterator>

#include "platform/windows/forms/filtered_box.h"
#include "platform/windows/forms/kept_pointer.h"
#include "platform/windows/gdi/gdi_handles.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

namespace {

using platform::ControlKind;

// The width of the longest item, with some room at its end.
int widthOf(HWND list, const std::vector<std::wstring>& items) {
    const ScreenContext screen(::GetDC(nullptr));
    const gdi::Selection font(screen.get(), keptPointer<HFONT>(::SendMessageW(list, WM_GETFONT, 0, 0)));
    LONG widest = 0;
    for (const std::wstring& item : items) {
        SIZE size{};
        ::GetTextExtentPoint32W(screen.get(), item.c_str(), static_cast<int>(item.size()), &size);
        widest = std::max(widest, size.cx);
    }
    return static_cast<int>(widest) + ::GetSystemMetrics(SM_CXVSCROLL) / 2;
}

// An item may only be passed on the way through an open list, and the one that was may be chosen.
bool isChoiceOfOpenList(HWND list, unsigned notification) {
    return notification == CBN_SELENDOK ||
           (notification == CBN_SELCHANGE && ::SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) == FALSE);
}

// The first button of an option's group, or the last one.
HWND endOfGroup(HWND option, UINT direction) {
    const auto isOption = [](HWND window) {
        return window != nullptr && (::SendMessageW(window, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0;
    };
    for (HWND next = option; isOption(next); next = ::GetWindow(next, direction)) {
        option = next;
    }
    return option;
}

void selectOption(HWND option, bool chosen) {
    if (chosen) {
        ::CheckRadioButton(::GetParent(option), ::GetDlgCtrlID(endOfGroup(option, GW_HWNDPREV)),
                           ::GetDlgCtrlID(endOfGroup(option, GW_HWNDNEXT)), ::GetDlgCtrlID(option));
    } else {
        ::SendMessageW(option, BM_SETCHECK, BST_UNCHECKED, 0);
    }
}

}  // namespace

bool dropsDown(ControlKind kind) { return kind == ControlKind::dropDownList || kind == ControlKind::comboBox; }

void setListItems(HWND window, ControlKind kind, const std::vector<std::string>& items) {
    const bool drops = dropsDown(kind);
    std::vector<std::wstring> texts;
    std::transform(items.begin(), items.end(), std::back_inserter(texts),
                   [](const std::string& item) { return widen(item); });
    const std::wstring text = windowText(window);
    ::SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    ::SendMessageW(window, drops ? CB_RESETCONTENT : LB_RESETCONTENT, 0, 0);
    for (const std::wstring& item : texts) {
        ::SendMessageW(window, drops ? CB_ADDSTRING : LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
    }
    if (kind == ControlKind::comboBox) {
        ::SetWindowTextW(window, text.c_str());
    }
    const auto width = static_cast<WPARAM>(widthOf(window, texts));
    ::SendMessageW(window, drops ? CB_SETDROPPEDWIDTH : LB_SETHORIZONTALEXTENT, width, 0);
    ::SendMessageW(window, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(window, nullptr, TRUE);
}

int selectedItem(HWND window, ControlKind kind) {
    if (kind == ControlKind::optionButton) {
        return ::SendMessageW(window, BM_GETCHECK, 0, 0) == BST_CHECKED ? 0 : -1;
    }
    return static_cast<int>(::SendMessageW(window, dropsDown(kind) ? CB_GETCURSEL : LB_GETCURSEL, 0, 0));
}

void selectItem(HWND window, ControlKind kind, int index) {
    if (kind == ControlKind::optionButton) {
        selectOption(window, index == 0);
    } else {
        ::SendMessageW(window, dropsDown(kind) ? CB_SETCURSEL : LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    }
}

bool isChoice(HWND window, ControlKind kind, unsigned notification) {
    switch (kind) {
        case ControlKind::listBox:
            return notification == LBN_SELCHANGE;
        case ControlKind::dropDownList:
        case ControlKind::comboBox:
            return isChoiceOfOpenList(window, notification);
        case ControlKind::button:
        case ControlKind::toolButton:
        case ControlKind::optionButton:
            return notification == BN_CLICKED;
        default:
            return false;
    }
}

}  // namespace platform_windows::forms
