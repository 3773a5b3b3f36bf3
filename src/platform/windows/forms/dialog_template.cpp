#include "platform/windows/forms/dialog_template.h"

#include <cstddef>
#include <cstdlib>
#include <utility>

#include "platform/windows/screen_resolution.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

namespace {

using platform::Control;
using platform::ControlKind;

constexpr int firstNumber = 100;

struct ControlWindow {
    WORD windowClass;  // number of a class that the system knows
    DWORD style;
    DWORD extendedStyle;
    int droppedHeight;  // more than the control's own, in dialog units
};

ControlWindow windowOf(ControlKind kind, bool isDefault) {
    constexpr WORD button = 0x0080;
    constexpr WORD edit = 0x0081;
    constexpr WORD text = 0x0082;
    constexpr WORD list = 0x0083;
    constexpr WORD combo = 0x0085;
    switch (kind) {
        case ControlKind::textBox:
            return {edit, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, 0};
        case ControlKind::listBox:
            return {list, WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, WS_EX_CLIENTEDGE,
                    0};
        case ControlKind::dropDownList:
            return {combo, WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0, 120};
        case ControlKind::button:
            return {button, WS_TABSTOP | static_cast<DWORD>(isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON), 0, 0};
        default:
            break;
    }
    return {text, SS_LEFT, 0, 0};
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
    to.number(WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | DS_SETFONT | DS_FIXEDSYS);
    to.word(static_cast<unsigned>(design.controls.size()));
    to.place(0, 0, design.width, 0);
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
    const ControlWindow window = windowOf(control.kind, control.name == design.defaultButton);
    to.alignToNumber();
    to.number(0);  // help
    to.number(window.extendedStyle);
    to.number(WS_CHILD | WS_VISIBLE | window.style);
    to.place(control.place.x, control.place.y, control.place.width, control.place.height + window.droppedHeight);
    to.number(static_cast<DWORD>(numberOf(design, index)));
    to.word(classByNumber);
    to.word(window.windowClass);
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
