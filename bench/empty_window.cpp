// The least that a Windows program with a window can do.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = ::DefWindowProcW;
    kind.hInstance = instance;
    kind.lpszClassName = L"EmptyWindow";
    ::RegisterClassW(&kind);
    ::CreateWindowW(L"EmptyWindow", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 450, 200, nullptr, nullptr, instance,
                    nullptr);
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        ::DispatchMessageW(&message);
    }
    return 0;
}
