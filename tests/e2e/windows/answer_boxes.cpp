// krv-answer: answers the message boxes of all programs, since nobody else does, until it is ended. The text of each is
// a line on standard output, line ends in it as blanks, UTF-8. The answer is "No" where there is one, otherwise "OK".
#include <windows.h>

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

}  // namespace

int main() {
    for (;; ::Sleep(pause)) {
        ::EnumWindows(answer, 0);
    }
}
