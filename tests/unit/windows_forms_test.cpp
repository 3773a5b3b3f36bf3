// Forms on Windows: what comes of the system's messages, and where a form and its controls lie.
#include "platform/windows/forms/windows_form.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "platform/windows/forms/clipboard.h"

namespace {

using enum platform::ControlKind;
using platform::Key;
using platform::Sizing;
using platform_windows::forms::WindowsForm;
using Told = std::vector<std::string>;

class Recorder final : public platform::FormEvents, public platform_windows::forms::FormKeeper {
public:
    Told take() { return std::exchange(told_, {}); }
    int cells = 0;

private:
    void clicked(const std::string& control) override { told_.push_back("clicked " + control); }
    void doubleClicked(const std::string& control) override { told_.push_back("double " + control); }
    void changed(const std::string& control) override { told_.push_back("changed " + control); }
    void pointed(const std::string&, const platform::Pointer& at) override {
        told_.push_back(std::to_string(int(at.action)) + " " + std::to_string(int(at.x)) + "," +
                        std::to_string(int(at.y)));
    }
    void wheeled(const std::string&, const platform::Wheel& wheel) override {
        told_.push_back((wheel.across ? "across " : "down ") + std::to_string(int(wheel.steps * 100)));
    }
    void scrolled(const std::string&, int across, int down) override {
        told_.push_back("scrolled " + std::to_string(across) + "," + std::to_string(down));
    }
    std::string cell(const std::string&, int row, int column) override {
        ++cells;
        return std::to_string(row) + ":" + std::to_string(column);
    }
    void timer() override { told_.emplace_back("timer"); }
    void closed() override { told_.emplace_back("closed"); }
    void gone(WindowsForm&) noexcept override {}
    void failed() noexcept override { ADD_FAILURE(); }

    Told told_;
};

platform::FormDesign design() {
    return {.name = "F",
            .title = "F",
            .width = 200,
            .controls = {{canvas, "page", "", "", {0, 20, 200, 100}, Sizing::fill},
                         {toolButton, "next", "Weiter", "", {4, 3, 14, 14}},
                         {textBox, "box", "", "", {20, 3, 30, 12}},
                         {comboBox, "combo", "", "", {60, 3, 30, 12}},
                         {optionButton, "one", "1", "", {100, 3, 30, 12}},
                         {optionButton, "two", "2", "", {140, 3, 30, 12}},
                         {label, "status", "", "", {0, 122, 200, 8}, Sizing::bottomLine}},
            .defaultButton = "",
            .cancelButton = "",
            .height = 130,
            .resizable = true,
            .shortcuts = {{Key::pageDown, false, false, "next"}, {Key::home, false, false, "first", false}}};
}

class WindowsFormTest : public testing::Test {
protected:
    HWND child(int index) const { return ::GetDlgItem(form.window(), 100 + index); }
    LRESULT send(int index, UINT message, WPARAM first = 0, LPARAM second = 0) const {
        return ::SendMessageW(child(index), message, first, second);
    }
    Told press(int index, WPARAM key) {
        MSG message{};
        message.hwnd = child(index);
        message.message = WM_KEYDOWN;
        message.wParam = key;
        form.takes(message);
        return recorder.take();
    }
    RECT placeOf(int index) const {
        RECT place{};
        ::GetWindowRect(child(index), &place);
        ::MapWindowPoints(nullptr, form.window(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }

    Recorder recorder;
    WindowsForm form{design(), recorder, recorder, nullptr};
};

TEST_F(WindowsFormTest, CanvasHasTheMouseWhileAButtonIsHeld) {
    form.show();
    send(0, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 6));
    send(0, WM_MBUTTONDOWN, MK_LBUTTON | MK_MBUTTON, MAKELPARAM(5, 6));
    EXPECT_EQ(::GetCapture(), child(0));
    send(0, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-7, -8));
    send(0, WM_LBUTTONUP, 0, MAKELPARAM(-7, -9));
    EXPECT_EQ(recorder.take(), (Told{"1 5,6", "0 -7,-8", "3 -7,-9"}));
    EXPECT_EQ(::GetFocus(), child(0));
    // Part of a notch, as touch pads send it; across, the system counts the other way.
    send(0, WM_MOUSEWHEEL, MAKEWPARAM(0, 30));
    send(0, platform_windows::forms::wheelAcross, MAKEWPARAM(0, 120));
    EXPECT_EQ(recorder.take(), (Told{"down 25", "across -100"}));
    form.setScrollBars("page", {}, {.whole = 1000, .page = 100, .position = 890});
    send(0, WM_VSCROLL, SB_PAGEDOWN);
    send(0, WM_VSCROLL, SB_PAGEDOWN);
    EXPECT_EQ(recorder.take(), (Told{"scrolled 0,900"})) << "it is at its end";
}

TEST_F(WindowsFormTest, KeysAndChoicesAreClicks) {
    form.show();
    form.focus("page");
    EXPECT_EQ(press(0, VK_NEXT), (Told{"clicked next"}));
    EXPECT_EQ(press(0, VK_HOME), (Told{"clicked first"}));
    EXPECT_EQ(press(0, VK_RETURN), Told{});
    form.setEnabled("next", false);
    EXPECT_EQ(press(0, VK_NEXT), Told{});
    form.focus("box");
    EXPECT_EQ(press(2, VK_HOME), Told{}) << "it means something else there";
    EXPECT_EQ(press(2, VK_RETURN), (Told{"clicked box"}));
    form.focus("combo");
    EXPECT_EQ(press(3, VK_RETURN), (Told{"clicked combo"}));

    form.setText("combo", "17");
    form.setItems("combo", {"50", "100"});
    EXPECT_EQ(form.text("combo"), "17");
    form.select("one", 0);
    EXPECT_EQ(recorder.take(), Told{}) << "nothing of it was the user's";
    send(5, BM_CLICK);
    EXPECT_EQ(recorder.take(), (Told{"clicked two"}));
    EXPECT_EQ(form.selected("one"), -1);
    EXPECT_EQ(form.selected("two"), 0);
}

TEST_F(WindowsFormTest, GrowsAndNeverShrinksBelowItsDesign) {
    const RECT page = placeOf(0);
    const RECT status = placeOf(6);
    const platform::WindowPlace place = form.windowPlace();
    form.setWindowPlace({place.x, place.y, place.width + 50, place.height + 30, false});
    EXPECT_EQ(placeOf(0).right - page.right, 50);
    EXPECT_EQ(placeOf(0).bottom - page.bottom, 30);
    EXPECT_EQ(placeOf(6).right - status.right, 50);
    EXPECT_EQ(placeOf(6).top - status.top, 30);
    EXPECT_EQ(placeOf(6).bottom - status.bottom, 30);
    form.setWindowPlace({-30000, 2'000'000'000, 1, 1, false});
    const platform::WindowPlace least = form.windowPlace();
    EXPECT_EQ(least.width, place.width);
    EXPECT_EQ(least.height, place.height);
    RECT window{};
    ::GetWindowRect(form.window(), &window);
    EXPECT_TRUE(window.left >= 0 && window.bottom <= ::GetSystemMetrics(SM_CYSCREEN)) << "no such screen";
}

TEST_F(WindowsFormTest, TakesNoInputWhileItOwnsAnotherOne) {
    {
        Recorder other;
        const WindowsForm owned(design(), other, other, form.window());
        EXPECT_FALSE(::IsWindowEnabled(form.window()));
    }
    EXPECT_TRUE(::IsWindowEnabled(form.window()));
}

class WindowsTableTest : public testing::Test {
protected:
    static platform::FormDesign design() {
        return {.name = "T",
                .title = "T",
                .width = 200,
                .controls = {{table, "jobs", "", "", {0, 0, 200, 80}, Sizing::fill, {}, {{"Nr", 30, true}, {"D", 90}}},
                             {textView, "report", "", "", {0, 80, 200, 40}},
                             {button, "ok", "OK", "", {0, 120, 40, 10}}},
                .defaultButton = "ok",
                .cancelButton = "",
                .height = 130,
                .shortcuts = {{Key::deleteKey, false, false, "remove", false}}};
    }
    LRESULT send(const std::string& name, UINT message, WPARAM first = 0, LPARAM second = 0) const {
        return ::SendMessageW(windowOf(name), message, first, second);
    }
    HWND windowOf(const std::string& name) const { return ::GetDlgItem(form.window(), name == "jobs" ? 100 : 101); }
    // Input is as good as the system's: posted, and dispatched as the program does.
    void press(const std::string& name, WPARAM key) {
        form.focus(name);
        ::PostMessageW(windowOf(name), WM_KEYDOWN, key, 0);
        serve();
    }
    void serve() {
        MSG message{};
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            if (!form.takes(message)) {
                ::TranslateMessage(&message);
                ::DispatchMessageW(&message);
            }
        }
    }
    std::wstring cell(int row, int column) const {
        std::array<wchar_t, 20> text{};
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = std::ssize(text);
        send("jobs", LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return text.data();
    }
    LRESULT top() const { return send("jobs", LVM_GETTOPINDEX); }

    Recorder recorder;
    WindowsForm form{design(), recorder, recorder, nullptr};
};

TEST_F(WindowsTableTest, AsksForWhatItShowsAndTellsWhatTheUserSelects) {
    form.show();
    form.setRowCount("jobs", 10'000);
    EXPECT_EQ(cell(9'999, 1), L"9999:1");
    EXPECT_EQ(cell(3, 0), L"3:0");
    form.selectRows("jobs", {5'000, 5'002}, true);
    serve();
    EXPECT_EQ(recorder.take(), Told{}) << "it was the program";
    EXPECT_LT(recorder.cells, 500) << "only what is to be seen";
    const LRESULT first = top();
    EXPECT_TRUE(first > 4'900 && first <= 5'000);

    press("jobs", VK_DOWN);
    EXPECT_EQ(form.selectedRows("jobs"), (std::vector<int>{5'003}));
    EXPECT_EQ(recorder.take(), (Told{"clicked jobs"}));
    press("jobs", 'X');
    EXPECT_EQ(form.selectedRows("jobs"), (std::vector<int>{5'003})) << "a letter selects nothing";
    press("jobs", VK_RETURN);
    press("jobs", VK_DELETE);
    press("report", VK_DELETE);
    EXPECT_EQ(recorder.take(), (Told{"clicked ok", "clicked remove"}));

    form.selectRows("jobs", {5'003, 5'000}, false);
    form.setRowCount("jobs", 5'003);
    EXPECT_EQ(form.selectedRows("jobs"), (std::vector<int>{5'000}));
    form.setRowCount("jobs", 20'000);
    EXPECT_EQ(form.selectedRows("jobs"), (std::vector<int>{5'000})) << "none of the rows that are new";
    EXPECT_EQ(top(), first);
    serve();
    EXPECT_EQ(recorder.take(), Told{});

    const LPARAM place = MAKELPARAM(5, 30);
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) {
        ::PostMessageW(windowOf("jobs"), message, MK_LBUTTON, place);
    }
    serve();
    EXPECT_EQ(recorder.take(), (Told{"clicked jobs", "double jobs"}));
    EXPECT_EQ(form.selectedRows("jobs").size(), 1U);

    form.close();
    serve();
    EXPECT_EQ(form.selectedRows("jobs"), std::vector<int>{});
}

TEST_F(WindowsTableTest, TextIsReadWithItsLinesAndLeavesTheKeysOfTheFormToIt) {
    form.show();
    form.setText("report", "Zeile 1\nZeile 2");
    EXPECT_EQ(send("report", EM_GETLINECOUNT), 2);
    EXPECT_EQ(form.text("report"), "Zeile 1\nZeile 2");
    form.focus("report");
    send("report", WM_CHAR, 'A' - '@');
    send("report", WM_CHAR, 'C' - '@');
    EXPECT_EQ(platform_windows::forms::clipboardText(nullptr), L"Zeile 1\r\nZeile 2");
    press("report", VK_RETURN);
    EXPECT_EQ(recorder.take(), (Told{"clicked ok"}));
    press("report", VK_TAB);
    EXPECT_EQ(::GetFocus(), ::GetDlgItem(form.window(), IDOK));
}

TEST_F(WindowsTableTest, TimerRestsWhileTheFormIsNotSeen) {
    const auto serveFor = [&](DWORD milliseconds) {
        for (const DWORD begin = ::GetTickCount(); ::GetTickCount() - begin < milliseconds; ::Sleep(5)) {
            serve();
        }
        return recorder.take().size();
    };
    form.wantTimer(10);
    EXPECT_EQ(serveFor(50), 0U);
    form.show();
    EXPECT_GT(serveFor(100), 2U);
    ::ShowWindow(form.window(), SW_MINIMIZE);
    EXPECT_EQ(serveFor(50), 0U);
    form.wantTimer(60'000);
    form.show();
    EXPECT_EQ(serveFor(20), 0U);
    ::ShowWindow(form.window(), SW_HIDE);
    form.show();
    EXPECT_EQ(serveFor(20), 1U) << "once when it is seen again";
}

TEST(Clipboard, HasLinesAsOtherProgramsEndThem) {
    platform_windows::forms::setClipboardText(nullptr, "M\u00fcller\n\r\n12,50 \u20ac");
    EXPECT_EQ(platform_windows::forms::clipboardText(nullptr), L"M\u00fcller\r\n\r\n12,50 \u20ac");
}

}  // namespace
