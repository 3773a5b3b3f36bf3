#include "platform/windows/windows_dialogs.h"

#include <windows.h>

#include <exception>
#include <string_view>

#include "platform/messages/unseen_box.h"
#include "platform/windows/caller.h"
#include "platform/windows/files.h"
#include "platform/windows/handle.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/notification_area.h"
#include "platform/windows/places.h"
#include "platform/windows/standard_error.h"
#include "platform/windows/system_library.h"
#include "platform/windows/topmost_window.h"
#include "platform/windows/visible_desktop.h"
#include "platform/windows/wide_text.h"
#include "runtime/error.h"
#include "runtime/program.h"

namespace platform_windows {

namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;

// A host that fills the screen would hide a box that has no window of the program behind it.
UINT styleOf(Buttons buttons, Icon icon, HWND owner) {
    UINT style = MB_OK | MB_SETFOREGROUND | (owner == nullptr ? MB_SYSTEMMODAL : 0);
    if (buttons != Buttons::ok) {
        style |= buttons == Buttons::yesNo ? MB_YESNO : MB_OKCANCEL;
    }
    if (icon != Icon::none) {
        style |= icon == Icon::critical ? MB_ICONERROR : MB_ICONINFORMATION;
    }
    return style;
}

void tell(const std::string& text) {
    writeToStandardError(encode(widen(withLineEnds(std::string(runtime::programName) + ": " + text + "\n")), CP_ACP));
}

int showBox(const wchar_t* text, const wchar_t* title, Buttons buttons, Icon icon) noexcept {
    loadControls();
    const HWND owner = topmostWindow();
    return ::MessageBoxW(owner, text, title, styleOf(buttons, icon, owner));
}

// Without any memory: in UTF-8 or else in the ANSI code pages of the West.
void sayOutOfMemory() noexcept {
    writeToStandardError(::GetACP() == CP_UTF8 ? "KRVWinPr: Nicht gen\xC3\xBCgend Speicher\r\n"
                                               : "KRVWinPr: Nicht gen\xFCgend Speicher\r\n");
}

// By its full name, as the current directory, where the host keeps its files, must not have a say in what is started.
bool openInEditor(const std::string& file) {
    const std::wstring folder = systemFolder();
    const std::wstring program = folder + L"notepad.exe";
    std::wstring command = LR"(notepad ")" + widen(file) + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started{};
    if (folder.empty() || ::CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                           nullptr, &start, &started) == 0) {
        return false;
    }
    const KernelHandle thread(started.hThread);
    const KernelHandle process(started.hProcess);
    return true;
}

}  // namespace

Answer WindowsDialogs::messageBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title) {
    try {
        const std::string shownTitle = title.empty() ? std::string(runtime::programName) : title;
        const int pressed = hasVisibleDesktop()
                                ? showBox(widen(withLineEnds(text)).c_str(), widen(shownTitle).c_str(), buttons, icon)
                                : 0;
        switch (pressed) {
            case IDOK:
                return Answer::ok;
            case IDCANCEL:
                return buttons == Buttons::ok ? Answer::ok : Answer::cancel;
            case IDYES:
                return Answer::yes;
            case IDNO:
                return Answer::no;
            default:
                break;
        }
        tell(platform::messages::unseenBox(text, buttons, icon, title));
    } catch (const std::exception&) {
        outOfMemory();
    }
    return platform::messages::unseenAnswer(buttons);
}

// Nobody notices events that come a hundredth of a second late, but a page that asks for them after each run of text
// does.
void WindowsDialogs::processEvents() {
    constexpr std::uint64_t pause = 10;
    const std::uint64_t now = evenMilliseconds();
    if (now - eventsRunAt_ < pause) {
        return;
    }
    eventsRunAt_ = now;
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            // For the loop that runs the window; here it would be lost.
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

void WindowsDialogs::showTextFile(const std::string& path) {
    try {
        show(path);
    } catch (const std::exception&) {
        sayOutOfMemory();
    }
}

void WindowsDialogs::show(const std::string& path) {
    try {
        const std::wstring file = nativePath(path);
        if (!isFile(file)) {
            diagnostic("Die Datei " + path + " ist nicht vorhanden.");
        } else if (!hasVisibleDesktop() || !openInEditor(shownPath(file))) {
            diagnostic("Bitte lesen Sie die Datei " + shownPath(file));
        }
    } catch (const runtime::Error&) {
        diagnostic("Die Datei " + path + " kann nicht angezeigt werden.");
    }
}

void WindowsDialogs::diagnostic(const std::string& line) {
    try {
        tell(platform::messages::oneLine(line));
    } catch (const std::exception&) {
        sayOutOfMemory();
    }
}

bool WindowsDialogs::answerCaller(const std::string& text) {
    try {
        return tellCaller(text);
    } catch (const std::exception&) {
        sayOutOfMemory();
        return true;
    }
}

void WindowsDialogs::notify(const std::string& text) {
    try {
        if (hasVisibleDesktop()) {
            notifyInSecondProcess(platform::messages::oneLine(text));
        }
    } catch (const std::exception&) {
        sayOutOfMemory();
    }
}

void WindowsDialogs::outOfMemory() noexcept {
    sayOutOfMemory();
    if (hasVisibleDesktop()) {
        showBox(L"Nicht genügend Speicher", L"KRVWinPr", Buttons::ok, Icon::critical);
    }
}

}  // namespace platform_windows
