// krv-answer [--no] PROGRAM ARGUMENTS...: starts a program, says on standard output which message boxes it shows, and
// answers them, since nobody else does. The arguments get there exactly as they were written, standard error is its
// own.
//
// A box is one line, "title|icon or -|buttons|text", line ends within the text as blanks, UTF-8. The answer is the
// first button or, after --no, "No" where there is one. The exit code is the program's, 124 where it had to be ended
// because it ran longer than a minute.
#include <windows.h>

#include <set>
#include <string>

#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_system.h"

namespace {

using platform_windows::commandLineTail;
using platform_windows::KernelHandle;
using platform_windows::narrow;

std::wstring textOf(HWND window) {
    constexpr std::size_t longest = 32768;
    std::wstring text(longest, L'\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(longest))));
    return text;
}

bool shows(HWND box, int control) {
    const HWND window = ::GetDlgItem(box, control);
    return window != nullptr && (::GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

bool hasIcon(HWND box) {
    HWND part = nullptr;
    while ((part = ::FindWindowExW(box, part, L"Static", nullptr)) != nullptr) {
        if (::SendMessageW(part, STM_GETICON, 0, 0) != 0) {
            return true;
        }
    }
    return false;
}

void print(const std::string& text) {
    DWORD count = 0;
    ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
}

class Answering {
public:
    Answering(DWORD process, bool preferNo) : process_(process), preferNo_(preferNo) {}

    void lookForBoxes() { ::EnumWindows(lookAt, reinterpret_cast<LPARAM>(this)); }

private:
    static BOOL CALLBACK lookAt(HWND window, LPARAM self) {
        reinterpret_cast<Answering*>(self)->look(window);
        return TRUE;
    }

    void look(HWND window) {
        DWORD process = 0;
        ::GetWindowThreadProcessId(window, &process);
        wchar_t name[8] = {};
        ::GetClassNameW(window, name, 8);
        const bool box = process == process_ && std::wstring_view(name) == L"#32770";
        if (box && ::IsWindowVisible(window) != 0 && answered_.insert(window).second) {
            answer(window);
        }
    }

    void answer(HWND box) const {
        constexpr int textControl = 0xFFFF;
        const bool yesNo = shows(box, IDYES);
        const bool cancel = shows(box, IDCANCEL);
        std::string text;
        for (const char c : narrow(textOf(::GetDlgItem(box, textControl)))) {
            text += c == '\n' ? "" : std::string(1, c == '\r' ? ' ' : c);
        }
        print(narrow(textOf(box)) + "|" + (hasIcon(box) ? "icon" : "-") + "|" +
              (yesNo ? "yes no" : (cancel && shows(box, IDOK) ? "ok cancel" : "ok")) + "|" + text + "\n");
        const int button = yesNo ? (preferNo_ ? IDNO : IDYES) : (shows(box, IDOK) ? IDOK : IDCANCEL);
        ::PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    }

    DWORD process_;
    bool preferNo_;
    std::set<HWND> answered_;
};

}  // namespace

int main() {
    constexpr DWORD pause = 10;           // milliseconds
    constexpr ULONGLONG longest = 60000;  // milliseconds
    constexpr UINT ended = 124;
    std::wstring command(commandLineTail(::GetCommandLineW()));
    command.erase(0, command.find_first_not_of(L' '));
    const bool preferNo = command.starts_with(L"--no ");
    command.erase(0, preferNo ? 5 : 0);

    STARTUPINFOW start{};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION started{};
    if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &started) == 0) {
        print("cannot start " + narrow(command) + "\n");
        return 1;
    }
    const KernelHandle thread(started.hThread);
    const KernelHandle process(started.hProcess);
    Answering answering(started.dwProcessId, preferNo);
    const ULONGLONG begin = ::GetTickCount64();
    while (::WaitForSingleObject(process.get(), pause) == WAIT_TIMEOUT) {
        if (::GetTickCount64() - begin > longest) {
            ::TerminateProcess(process.get(), ended);
        }
        answering.lookForBoxes();
    }
    DWORD code = 0;
    ::GetExitCodeProcess(process.get(), &code);
    return static_cast<int>(code);
}
