#include "platform/windows/windows_dialogs.h"

#include <array>
#include <thread>

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

struct Search {
    std::string title;
    HWND found = nullptr;
};

BOOL CALLBACK lookAt(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    search.found = textOf(window).starts_with(search.title) ? window : nullptr;
    return search.found == nullptr ? TRUE : FALSE;
}

// The first window of which the title begins so; waits for it.
HWND windowOf(const std::string& title) {
    Search search{title};
    for (int i = 0; i < 500 && search.found == nullptr; ++i) {
        ::EnumWindows(lookAt, reinterpret_cast<LPARAM>(&search));
        ::Sleep(20);
    }
    return search.found;
}

struct Box {
    std::string text;
    std::set<int> buttons;
    bool icon = false;
    Answer answer = Answer::ok;
};

// Shows a box, looks at it from another thread and presses a button there.
Box shown(const std::string& text, Buttons buttons, Icon icon, const std::string& title, int press) {
    constexpr int textControl = 0xFFFF;
    Box box;
    std::thread user([&] {
        const HWND window = windowOf(title.empty() ? "KRVWinPr" : title);
        if (window == nullptr) {
            return;
        }
        box.text = textOf(::GetDlgItem(window, textControl));
        for (HWND part = ::FindWindowExW(window, nullptr, L"Static", nullptr); part != nullptr;
             part = ::FindWindowExW(window, part, L"Static", nullptr)) {
            box.icon = box.icon || ::SendMessageW(part, STM_GETICON, 0, 0) != 0;
        }
        for (const int button : {IDOK, IDCANCEL, IDYES, IDNO}) {
            const HWND control = ::GetDlgItem(window, button);
            if (control != nullptr && (::GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0) {
                box.buttons.insert(button);
            }
        }
        ::PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(press), 0);
    });
    box.answer = WindowsDialogs().messageBox(text, buttons, icon, title);
    user.join();
    return box;
}

TEST(WindowsDialogs, ShowsABoxAndSaysWhatWasPressed) {
    Box box = shown("Größe\rzwei\n\nvier\r\nfünf\r", Buttons::yesNo, Icon::none, "Frage ä", IDNO);
    EXPECT_EQ(box.text, "Größe\r\nzwei\r\n\r\nvier\r\nfünf\r\n");
    EXPECT_EQ(box.buttons, (std::set<int>{IDYES, IDNO}));
    EXPECT_FALSE(box.icon);
    EXPECT_EQ(box.answer, Answer::no);
    EXPECT_EQ(shown("x", Buttons::yesNo, Icon::none, "Frage ä", IDYES).answer, Answer::yes);

    box = shown("x", Buttons::okCancel, Icon::critical, "", IDCANCEL);
    EXPECT_EQ(box.buttons, (std::set<int>{IDOK, IDCANCEL}));
    EXPECT_TRUE(box.icon);
    EXPECT_EQ(box.answer, Answer::cancel);
    EXPECT_EQ(shown("x", Buttons::okCancel, Icon::information, "", IDOK).answer, Answer::ok);
    // Escape, where the only button is OK.
    EXPECT_EQ(shown("x", Buttons::ok, Icon::none, "", IDCANCEL).answer, Answer::ok);
}

TEST(WindowsDialogs, ProcessesPendingEventsButLeavesTheEndToOthers) {
    WindowsDialogs dialogs;
    const HWND window = ::CreateWindowW(L"STATIC", L"", 0, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_NE(::IsWindow(window), 0);
    dialogs.processEvents();
    EXPECT_EQ(::IsWindow(window), 0);
    ::PostQuitMessage(7);
    dialogs.processEvents();
    MSG message{};
    ASSERT_NE(::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE), 0);
    EXPECT_EQ(message.message, UINT{WM_QUIT});
    EXPECT_EQ(message.wParam, WPARAM{7});
}

TEST(WindowsDialogs, OpensTheEditorWithTheFile) {
    const TemporaryFolder folder;
    put(folder / "Größe x.log", "x");
    WindowsDialogs().showTextFile(folder / "größe X.LOG");
    const HWND editor = windowOf("größe X.LOG");
    ASSERT_NE(editor, nullptr);
    DWORD process = 0;
    ::GetWindowThreadProcessId(editor, &process);
    const KernelHandle running(::OpenProcess(SYNCHRONIZE, FALSE, process));
    ::PostMessageW(editor, WM_CLOSE, 0, 0);
    EXPECT_EQ(::WaitForSingleObject(running.get(), 10'000), DWORD{WAIT_OBJECT_0});
}

// Standard error as the object's owner wants it, for as long as the object lives.
class StandardError {
public:
    explicit StandardError(HANDLE handle) : before_(::GetStdHandle(STD_ERROR_HANDLE)) {
        ::SetStdHandle(STD_ERROR_HANDLE, handle);
    }
    StandardError(const StandardError&) = delete;
    StandardError& operator=(const StandardError&) = delete;
    ~StandardError() { ::SetStdHandle(STD_ERROR_HANDLE, before_); }

private:
    HANDLE before_;
};

TEST(WindowsDialogs, WhereNobodySeesABoxItsTextGoesToStandardError) {
    const TemporaryFolder folder;
    const FileHandle file = openShared(folder / "errors", GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW);
    const StandardError errors(file.get());
    const HWINSTA desk = ::GetProcessWindowStation();
    const HWINSTA background = ::CreateWindowStationW(L"krv-test", 0, WINSTA_ALL_ACCESS, nullptr);
    ASSERT_NE(::SetProcessWindowStation(background), 0);
    WindowsDialogs dialogs;
    EXPECT_EQ(dialogs.messageBox("Datei\r\n\tüber ☺\r", Buttons::ok, Icon::critical, "Druck"), Answer::ok);
    EXPECT_EQ(dialogs.messageBox("Anzeigen?", Buttons::yesNo, Icon::none, "KrvWinPr"), Answer::yes);
    EXPECT_EQ(dialogs.messageBox("Weiter?", Buttons::okCancel, Icon::none, ""), Answer::ok);
    put(folder / "x.log", "x");
    dialogs.showTextFile(folder / "x.log");
    dialogs.showTextFile(folder / "fehlt.log");
    ::SetProcessWindowStation(desk);
    ::CloseWindowStation(background);
    EXPECT_EQ(get(folder / "errors"),
              "KRVWinPr: Druck: Datei \xFC"
              "ber ?\r\n"
              "KRVWinPr: Anzeigen? [Antwort: Ja]\r\n"
              "KRVWinPr: Weiter? [Antwort: OK]\r\n"
              "KRVWinPr: Bitte lesen Sie die Datei " +
                  (folder / "x.log") +
                  "\r\n"
                  "KRVWinPr: Die Datei " +
                  (folder / "fehlt.log") + " ist nicht vorhanden.\r\n");
}

TEST(WindowsDialogs, DiagnosticsWaitForNobody) {
    FileHandle reading;
    FileHandle writing;
    ASSERT_NE(::CreatePipe(reading.receive(), writing.receive(), nullptr, 0), 0);
    {
        const StandardError pipe(writing.get());
        for (int i = 0; i < 100; ++i) {
            WindowsDialogs().diagnostic(std::string(1000, 'x'));
        }
    }
    std::array<char, 9> start{};
    DWORD count = 0;
    EXPECT_NE(::ReadFile(reading.get(), start.data(), 8, &count, nullptr), 0);
    EXPECT_STREQ(start.data(), "KRVWinPr");
    reading.reset();
    for (const HANDLE handle : {writing.get(), HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
        const StandardError nobody(handle);
        WindowsDialogs().diagnostic("x");
    }
}

}  // namespace
