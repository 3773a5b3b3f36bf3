#include "platform/windows/forms/tool_tips.h"

#include <commctrl.h>

#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

HWND makeToolTips(HWND form) {
    return ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                             CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, form, nullptr,
                             ::GetModuleHandleW(nullptr), nullptr);
}

void addToolTip(HWND tips, HWND control, const std::string& text) {
    std::wstring wide = widen(text);
    if (wide.empty()) {
        return;
    }
    TOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = ::GetParent(control);
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = wide.data();
    ::SendMessageW(tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace platform_windows::forms
