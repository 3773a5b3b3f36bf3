// The port Dialogs on Windows, beside what ports_test.cpp asks of every system.
#include "platform/windows/windows_dialogs.h"

#include <array>

#include "windows_support.h"

namespace {

using namespace windows_support;
using platform::Answer;
using platform::Buttons;
using platform::Icon;
using platform_windows::KernelHandle;
using platform_windows::WindowsDialogs;

std::string textOf(HWND window) {
    std::wstring text(1000, L'\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return narrow(text);
}

// "title|icon or -|its buttons|text" of the last box shown, and the button to press in the next one.
std::string box;
HWND ownerOfBox = nullptr;
bool boxInFront = false;
int press = 0;

// Looks at the box, once its own loop runs, and presses.
void CALLBACK answer(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND window = ::FindWindowW(L"#32770", nullptr);
    if (window == nullptr || ::GetWindowThreadProcessId(window, nullptr) != ::GetCurrentThreadId()) {
        return;
    }
    ::KillTimer(nullptr, timer);
    bool icon = false;
    HWND part = nullptr;
    while ((part = ::FindWindowExW(window, part, L"Static", nullptr)) != nullptr) {
        icon = icon || ::SendMessageW(part, STM_GETICON, 0, 0) != 0;
    }
    box = textOf(window) + (icon ? "|icon|" : "|-|");
    for (const int button : {IDOK, IDCANCEL, IDYES, IDNO}) {
        const HWND control = ::GetDlgItem(window, button);
        const bool shown = control != nullptr && (::GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0;
        box += shown ? std::to_string(button) : "";
    }
    box += "|" + textOf(::GetDlgItem(window, 0xFFFF));
    ownerOfBox = ::GetWindow(window, GW_OWNER);
    boxInFront = (::GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    ::PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(press), 0);
}

class WindowsBoxes : public ::testing::Test {
protected:
    static Answer shown(const std::string& text, Buttons buttons, Icon icon, const std::string& title, int button) {
        press = button;
        ::SetTimer(nullptr, 0, 1, answer);
        return WindowsDialogs().messageBox(text, buttons, icon, title);
    }
};

TEST_F(WindowsBoxes, AreShownAndSayWhatWasPressed) {
    EXPECT_EQ(shown("Größe\rzwei\n\nvier\r\nfünf\r", Buttons::yesNo, Icon::none, "Frage ä", IDNO), Answer::no);
    EXPECT_EQ(box, "Frage ä|-|67|Größe\r\nzwei\r\n\r\nvier\r\nfünf\r\n");
    EXPECT_EQ(shown("x", Buttons::yesNo, Icon::none, "Frage", IDYES), Answer::yes);
    EXPECT_EQ(shown("x", Buttons::okCancel, Icon::critical, "", IDCANCEL), Answer::cancel);
    EXPECT_EQ(box, "KRVWinPr|icon|12|x");
    EXPECT_EQ(shown("x", Buttons::okCancel, Icon::information, "", IDOK), Answer::ok);
    // Escape, where the only button is OK.
    EXPECT_EQ(shown("x", Buttons::ok, Icon::none, "", IDCANCEL), Answer::ok);
}

TEST_F(WindowsBoxes, BelongToTheTopmostWindowThatCanBeUsed) {
    const auto owner = [] {
        shown("x", Buttons::ok, Icon::none, "", IDOK);
        return ownerOfBox;
    };
    const auto open = [] {
        return ::CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 100, 100, nullptr, nullptr, nullptr,
                               nullptr);
    };
    EXPECT_EQ(owner(), nullptr);
    EXPECT_TRUE(boxInFront) << "a host that fills the screen hides it";
    const HWND form = open();
    const HWND dialog = open();
    ::BringWindowToTop(dialog);
    EXPECT_EQ(owner(), dialog);
    EXPECT_FALSE(boxInFront);
    ::EnableWindow(dialog, FALSE);
    EXPECT_EQ(owner(), form);
    ::ShowWindow(form, SW_HIDE);
    EXPECT_EQ(owner(), nullptr);
    ::DestroyWindow(dialog);
    ::DestroyWindow(form);
}

TEST(WindowsDialogs, ProcessPendingEventsButLeaveTheEndToOthers) {
    const HWND window = ::CreateWindowW(L"STATIC", L"", 0, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    WindowsDialogs().processEvents();
    EXPECT_EQ(::IsWindow(window), 0);
    ::PostQuitMessage(7);
    WindowsDialogs().processEvents();
    MSG message{};
    ASSERT_NE(::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE), 0);
    EXPECT_EQ(message.message, UINT{WM_QUIT});
    EXPECT_EQ(message.wParam, WPARAM{7});
}

TEST(WindowsDialogs, OpenTheEditorWithTheFile) {
    const TemporaryFolder folder;
    put(folder / "Größe x.log", "x");
    WindowsDialogs().showTextFile(folder / "größe X.LOG");
    HWND editor = nullptr;
    for (int i = 0; i < 500 && !textOf(editor).starts_with("größe X.LOG"); ++i) {
        ::Sleep(20);
        editor = ::FindWindowW(L"Notepad", nullptr);
    }
    ASSERT_TRUE(textOf(editor).starts_with("größe X.LOG")) << textOf(editor);
    DWORD process = 0;
    ::GetWindowThreadProcessId(editor, &process);
    const KernelHandle running(::OpenProcess(SYNCHRONIZE, FALSE, process));
    ::PostMessageW(editor, WM_CLOSE, 0, 0);
    EXPECT_EQ(::WaitForSingleObject(running.get(), 10'000), DWORD{WAIT_OBJECT_0});
}

void withErrorsTo(HANDLE handle, const std::function<void()>& function) {
    const HANDLE before = ::GetStdHandle(STD_ERROR_HANDLE);
    ::SetStdHandle(STD_ERROR_HANDLE, handle);
    function();
    ::SetStdHandle(STD_ERROR_HANDLE, before);
}

TEST(WindowsDialogs, DiagnosticsWaitForNobody) {
    FileHandle reading;
    FileHandle writing;
    ASSERT_NE(::CreatePipe(reading.receive(), writing.receive(), nullptr, 0), 0);
    withErrorsTo(writing.get(), [] {
        for (int i = 0; i < 100; ++i) {
            WindowsDialogs().diagnostic(std::string(1000, 'x'));
        }
    });
    std::array<char, 9> start{};
    DWORD count = 0;
    EXPECT_NE(::ReadFile(reading.get(), start.data(), 8, &count, nullptr), 0);
    EXPECT_STREQ(start.data(), "KRVWinPr");
    reading.reset();
    for (const HANDLE handle : {writing.get(), HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
        withErrorsTo(handle, [] { WindowsDialogs().diagnostic("x"); });
    }
}

}  // namespace

// In the user's ANSI code page, as programs that read standard error expect it.
std::string support::writtenBy(const std::function<void(platform::Dialogs&)>& function) {
    const TemporaryFolder folder;
    const FileHandle file =
        openShared(folder / "errors", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, CREATE_NEW);
    const HWINSTA desk = ::GetProcessWindowStation();
    const HWINSTA background = ::CreateWindowStationW(L"krv-test", 0, WINSTA_ALL_ACCESS, nullptr);
    EXPECT_NE(::SetProcessWindowStation(background), 0);
    WindowsDialogs dialogs;
    withErrorsTo(file.get(), [&] { function(dialogs); });
    ::SetProcessWindowStation(desk);
    ::CloseWindowStation(background);
    std::string written = narrow(platform_windows::decode(get(folder / "errors"), CP_ACP, 0));
    EXPECT_EQ(std::count(written.begin(), written.end(), '\r'), std::count(written.begin(), written.end(), '\n'));
    std::erase(written, '\r');
    return written;
}
