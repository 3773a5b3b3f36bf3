// krv-answer: answers the message boxes of all programs, since nobody else does, until it is ended. The text of each is
// a line on standard output, line ends in it as blanks, UTF-8. The answer is "No" where there is one, otherwise "OK".
// It is the taskbar as well: a message in the notification area is a line "[title] text".
#include <windows.h>

#include <shellapi.h>

#include <array>
#include <iostream>
#include <string>

#include "platform/windows/wide_text.h"

namespace {

constexpr DWORD pause = 10;  // milliseconds

BOOL CALLBACK answer(HWND window, LPARAM /*unused*/) {
    constexpr int textControl = 0xFFFF;
    std::array<wchar_t, 8> name{};
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    if (std::wstring_view(name.data()) == L"#32770" && ::IsWindowVisible(window) != 0) {
        std::wstring text(32768, L'\0');
        text.resize(::GetDlgItemTextW(window, textControl, text.data(), static_cast<int>(text.size())));
        for (const char c : platform_windows::narrow(text)) {
            std::cout << (c == '\r' || c == '\n' ? ' ' : c);
        }
        std::cout << std::endl;
        ::PostMessageW(window, WM_COMMAND, ::GetDlgItem(window, IDNO) != nullptr ? IDNO : IDOK, 0);
        while (::IsWindow(window) != 0) {
            ::Sleep(pause);
        }
    }
    return TRUE;
}

// What Wine hands to the taskbar for an icon; it begins like this.
struct IconData {
    LONG window;
    UINT id, flags, callback;
    wchar_t tip[128];
    DWORD state, stateMask;
    wchar_t text[256];
    UINT timeOut;
    wchar_t title[64];
};

LRESULT CALLBACK taskbar(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message != WM_COPYDATA) {
        return ::DefWindowProcW(window, message, first, second);
    }
    const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(second);
    const auto* icon = static_cast<const IconData*>(data->lpData);
    if (data->dwData == NIM_ADD && data->cbData >= sizeof(IconData)) {
        std::cout << '[' << platform_windows::narrow(icon->title) << "] " << platform_windows::narrow(icon->text)
                  << std::endl;
        // The user clicks on it.
        ::PostMessageW(reinterpret_cast<HWND>(first), icon->callback, icon->id, NIN_BALLOONUSERCLICK);
    }
    return TRUE;
}

void makeTaskbar() {
    WNDCLASSW kind{};
    kind.lpfnWndProc = taskbar;
    kind.lpszClassName = L"Shell_TrayWnd";
    ::RegisterClassW(&kind);
    ::CreateWindowExW(0, kind.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
}

}  // namespace

int main() {
    makeTaskbar();
    for (;; ::Sleep(pause)) {
        MSG message{};
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
            ::DispatchMessageW(&message);
        }
        ::EnumWindows(answer, 0);
    }
}
