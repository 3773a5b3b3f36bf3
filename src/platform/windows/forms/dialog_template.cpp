#include "platform/windows/forms/dialog_template.h"

#include <cstddef>
#include <cstdlib>
#include <utility>

#include "platform/windows/forms/canvas_window.h"
#include "platform/windows/forms/table_view.h"
#include "platform/windows/forms/text_view.h"
#include "platform/windows/screen_resolution.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

namespace {

using platform::Control;
using platform::ControlKind;

constexpr int firstNumber = 100;

struct ControlWindow {
    WORD windowClass;  // number of a class that the system knows; 0: one with a name
    DWORD style;
    DWORD extendedStyle = 0;
    int droppedHeight = 0;  // more than the control's own, in dialog units
    const wchar_t* className = nullptr;
};

constexpr DWORD listStyle = WS_TABSTOP | WS_VSCROLL;
constexpr int droppedHeight = 120;

ControlWindow labelOf(const Control& control) {
    constexpr WORD text = 0x0082;
    // A line of its own names nothing, so it has no access key, and may be longer than there is room for.
    return {text, control.sizing == platform::Sizing::bottomLine ? DWORD{SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS}
                                                                 : DWORD{SS_LEFT}};
}

ControlWindow windowOf(const Control& control, bool isDefault) {
    constexpr WORD button = 0x0080;
    constexpr WORD edit = 0x0081;
    constexpr WORD list = 0x0083;
    constexpr WORD combo = 0x0085;
    switch (control.kind) {
        case ControlKind::textBox:
            return {edit, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
        case ControlKind::listBox:
            return {list, listStyle | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, WS_EX_CLIENTEDGE};
        case ControlKind::dropDownList:
            return {combo, listStyle | CBS_DROPDOWNLIST, 0, droppedHeight};
        case ControlKind::comboBox:
            return {combo, listStyle | CBS_DROPDOWN | CBS_AUTOHSCROLL, 0, droppedHeight};
        case ControlKind::optionButton:
            return {button, BS_AUTORADIOBUTTON};
        case ControlKind::button:
            return {button, WS_TABSTOP | static_cast<DWORD>(isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON)};
        case ControlKind::toolButton:
            return {button, BS_OWNERDRAW};
        case ControlKind::canvas:
            return {0, WS_TABSTOP, 0, 0, CanvasWindow::windowClass()};
        case ControlKind::textView:
            return {edit, TextView::windowStyle, WS_EX_CLIENTEDGE};
        case ControlKind::table:
            return {0, TableView::windowStyle, WS_EX_CLIENTEDGE, 0, TableView::windowClass};
        case ControlKind::label:
            break;
    }
    return labelOf(control);
}

// The arrow keys go from one option to the next within a group; the first one is in the tab order.
DWORD groupStyle(const std::vector<Control>& controls, std::size_t index) {
    const auto isOption = [&](std::size_t at) { return controls[at].kind == ControlKind::optionButton; };
    const bool follows = index > 0 && isOption(index - 1);
    if (isOption(index)) {
        return follows ? 0 : WS_GROUP | WS_TABSTOP;
    }
    return follows ? WS_GROUP : 0;
}

// Puts words and double words behind each other as the templates want them.
class Writer {
public:
    void word(unsigned value) { words_.push_back(static_cast<WORD>(value)); }
    void number(DWORD value) {
        word(LOWORD(value));
        word(HIWORD(value));
    }
    void place(int x, int y, int width, int height) {
        for (const int value : {x, y, width, height}) {
            word(static_cast<WORD>(value));
        }
    }
    void text(const std::wstring& text) {
        words_.insert(words_.end(), text.begin(), text.end());
        word(0);
    }
    void alignToNumber() {
        if (words_.size() % 2 != 0) {
            word(0);
        }
    }
    std::vector<WORD> take() { return std::move(words_); }

private:
    std::vector<WORD> words_;
};

void writeHeader(Writer& to, const platform::FormDesign& design, const DialogFont& font) {
    constexpr unsigned version = 1;
    constexpr unsigned extended = 0xFFFF;
    to.word(version);
    to.word(extended);
    to.number(0);  // help
    to.number(0);  // extended style
    // Its controls are not painted over when it has another size.
    constexpr DWORD resizable = WS_THICKFRAME | WS_MAXIMIZEBOX | WS_CLIPCHILDREN;
    to.number(WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | DS_SETFONT | DS_FIXEDSYS |
              (design.resizable ? resizable : 0));
    to.word(static_cast<unsigned>(design.controls.size()));
    to.place(0, 0, design.width, design.height);
    to.word(0);  // no menu
    to.word(0);  // the usual class
    to.text(widen(design.title));
    to.word(static_cast<unsigned>(font.points));
    to.word(static_cast<unsigned>(font.weight));
    to.word(DEFAULT_CHARSET << 8);  // upright
    to.text(font.face);
}

void writeControl(Writer& to, const platform::FormDesign& design, std::size_t index) {
    constexpr unsigned classByNumber = 0xFFFF;
    const Control& control = design.controls[index];
    const ControlWindow window = windowOf(control, control.name == design.defaultButton);
    to.alignToNumber();
    to.number(0);  // help
    to.number(window.extendedStyle);
    to.number(WS_CHILD | WS_VISIBLE | window.style | groupStyle(design.controls, index));
    to.place(control.place.x, control.place.y, control.place.width, control.place.height + window.droppedHeight);
    to.number(static_cast<DWORD>(numberOf(design, index)));
    if (window.windowClass != 0) {
        to.word(classByNumber);
        to.word(window.windowClass);
    } else {
        to.text(window.className);
    }
    to.text(widen(control.caption));
    to.word(0);  // nothing of its own
}

}  // namespace

DialogFont dialogFont() {
    // The record of Windows XP, which later ones take as well.
    constexpr UINT size = offsetof(NONCLIENTMETRICSW, lfMessageFont) + sizeof(LOGFONTW);
    constexpr int pointsInAnInch = 72;
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = size;
    if (::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, size, &metrics, 0) == FALSE ||
        metrics.lfMessageFont.lfHeight == 0) {
        return {.face = L"MS Shell Dlg"};
    }
    const LOGFONTW& font = metrics.lfMessageFont;
    const int pixels = std::abs(font.lfHeight);
    return {font.lfFaceName, ::MulDiv(pixels, pointsInAnInch, screenResolution(LOGPIXELSY)), pixels, font.lfWeight};
}

int numberOf(const platform::FormDesign& design, std::size_t control) {
    const std::string& name = design.controls[control].name;
    if (name == design.defaultButton) {
        return IDOK;
    }
    return name == design.cancelButton ? IDCANCEL : firstNumber + static_cast<int>(control);
}

std::vector<WORD> dialogTemplate(const platform::FormDesign& design, const DialogFont& font) {
    Writer writer;
    writeHeader(writer, design, font);
    for (std::size_t index = 0; index < design.controls.size(); ++index) {
        writeControl(writer, design, index);
    }
    return writer.take();
}

}  // namespace platform_windows::forms
