#include "platform/windows/forms/text_view.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/windows/forms/kept_pointer.h"

namespace platform_windows::forms {

namespace {

// The same kind of font stands for it where it is missing.
HFONT fixedFont(int pixels) {
    constexpr std::wstring_view face = L"Consolas";
    LOGFONTW font{};
    font.lfHeight = -pixels;
    font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    std::copy(face.begin(), face.end(), std::begin(font.lfFaceName));
    return ::CreateFontIndirectW(&font);
}

}  // namespace

const DWORD TextView::windowStyle =
    WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL;

TextView::TextView(HWND window, int fontPixels)
    : next_(keptPointer<WNDPROC>(::GetWindowLongPtrW(window, GWLP_WNDPROC))), font_(fixedFont(fontPixels)) {
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(handle));
    ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
}

LRESULT CALLBACK TextView::handle(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    constexpr WPARAM controlA = 1;
    if (message == WM_GETDLGCODE) {
        // Tab, Enter and Esc are the form's, and getting the focus selects nothing.
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    }
    if (message == WM_CHAR && first == controlA) {
        ::SendMessageW(window, EM_SETSEL, 0, -1);
        return 0;
    }
    const auto* const view = keptPointer<const TextView*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    return ::CallWindowProcW(view->next_, window, message, first, second);
}

}  // namespace platform_windows::forms
