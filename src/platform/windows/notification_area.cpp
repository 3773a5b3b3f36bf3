#include "platform/windows/notification_area.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <exception>
#include <iterator>
#include <string>
#include <type_traits>

#include "platform/windows/second_process.h"
#include "platform/windows/system_library.h"
#include "platform/windows/wide_text.h"
#include "runtime/program.h"

namespace platform_windows {

namespace {

// In the second process's environment: the text. No command line of the host can be taken for it.
constexpr const wchar_t* variable = L"KRVWINPR_NOTIFICATION";
constexpr UINT iconEvent = WM_APP;
constexpr UINT halfAMinute = 30'000;  // milliseconds

// The library takes its time to load, and what a job does before its completion file needs nothing of it.
BOOL notifyIcon(DWORD message, NOTIFYICONDATAW& icon) {
    static const auto call =
        functionOf<decltype(&::Shell_NotifyIconW)>(systemLibrary(L"shell32.dll"), "Shell_NotifyIconW");
    return call != nullptr ? call(message, &icon) : FALSE;
}

// As much of a text as there is room for, with a null character behind it.
template <typename Room>
void fill(Room& room, std::wstring text) {
    constexpr std::size_t most = std::extent_v<Room> - 1;
    if (text.size() > most) {
        text.resize(most - 1);
        if (IS_HIGH_SURROGATE(text.back())) {
            text.pop_back();
        }
        text += L'…';
    }
    *std::copy(text.begin(), text.end(), std::begin(room)) = L'\0';
}

LRESULT CALLBACK handle(HWND window, UINT message, WPARAM first, LPARAM second) {
    const bool over = second == NIN_BALLOONTIMEOUT || second == NIN_BALLOONUSERCLICK || second == NIN_BALLOONHIDE;
    if (message == WM_TIMER || (message == iconEvent && over)) {
        ::PostQuitMessage(0);
        return 0;
    }
    return ::DefWindowProcW(window, message, first, second);
}

HWND makeWindow() {
    WNDCLASSW kind{};
    kind.lpfnWndProc = handle;
    kind.hInstance = ::GetModuleHandleW(nullptr);
    kind.lpszClassName = L"KRVWinPrNotification";
    ::RegisterClassW(&kind);
    return ::CreateWindowExW(0, kind.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, kind.hInstance, nullptr);
}

void runUntilOver(HWND window) {
    if (::SetTimer(window, 1, halfAMinute, nullptr) == 0) {
        return;  // nothing else is sure to end it
    }
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        ::DispatchMessageW(&message);
    }
}

// A taskbar that has much to do, at a user's logon say, does not take it at once.
bool addIcon(NOTIFYICONDATAW& icon) {
    constexpr int attempts = 4;
    constexpr DWORD pause = 1000;  // milliseconds
    for (int i = 1; i < attempts; ++i) {
        if (notifyIcon(NIM_ADD, icon) != FALSE) {
            return true;
        }
        ::Sleep(pause);
    }
    return notifyIcon(NIM_ADD, icon) != FALSE;
}

void show(const std::wstring& text) {
    const std::wstring program = widen(runtime::programName);
    NOTIFYICONDATAW icon{};
    // Windows XP takes no record with the members that Vista added.
    icon.cbSize = NOTIFYICONDATAW_V2_SIZE;
    icon.hWnd = makeWindow();
    icon.uFlags = NIF_ICON | NIF_TIP | NIF_INFO | NIF_MESSAGE;
    icon.uCallbackMessage = iconEvent;
    icon.hIcon = ::LoadIconW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1));
    icon.dwInfoFlags = NIIF_WARNING;
    fill(icon.szTip, program);
    fill(icon.szInfoTitle, program);
    fill(icon.szInfo, text);
    if (addIcon(icon)) {
        runUntilOver(icon.hWnd);
        notifyIcon(NIM_DELETE, icon);
    }
}

}  // namespace

void notifyInSecondProcess(std::string_view text) { startSecondProcess(variable, widen(text).c_str()); }

bool wasNotification() noexcept {
    const DWORD size = ::GetEnvironmentVariableW(variable, nullptr, 0);
    if (size == 0) {
        return false;
    }
    try {
        std::wstring text(size, L'\0');
        text.resize(::GetEnvironmentVariableW(variable, text.data(), size));
        show(text);
    } catch (const std::exception&) {
        // Out of memory: then there is no message.
    }
    return true;
}

}  // namespace platform_windows
