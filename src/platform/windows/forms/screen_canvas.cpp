#include "platform/windows/forms/screen_canvas.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

#include "platform/windows/forms/dialog_template.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

namespace {

using platform::Box;
using platform::Color;
using platform::SystemColor;
using platform::TextStyle;

Color systemColor(int index) {
    const DWORD color = ::GetSysColor(index);
    return {.red = GetRValue(color), .green = GetGValue(color), .blue = GetBValue(color)};
}

int brightness(Color color) { return (color.red * 299 + color.green * 587 + color.blue * 114) / 1000; }

// A scheme of colours of which each is told on its own need not go together.
Color windowTextOnWorkspace() {
    constexpr int enough = 100;
    constexpr int half = 128;
    const Color text = systemColor(COLOR_WINDOWTEXT);
    const int behind = brightness(systemColor(COLOR_APPWORKSPACE));
    if (std::abs(brightness(text) - behind) >= enough) {
        return text;
    }
    return behind < half ? Color{255, 255, 255} : Color{};
}

Color colorOf(SystemColor color) {
    switch (color) {
        case SystemColor::workspace:
            return systemColor(COLOR_APPWORKSPACE);
        case SystemColor::windowText:
            return windowTextOnWorkspace();
        case SystemColor::selection:
            break;
    }
    return systemColor(COLOR_HIGHLIGHT);
}

gdi::Font fontFor(TextStyle style) {
    const DialogFont usual = dialogFont();
    const bool heading = style == TextStyle::heading;
    LOGFONTW font{};
    font.lfHeight = -(heading ? ::MulDiv(usual.pixels, 4, 3) : usual.pixels);
    font.lfWeight = heading ? FW_BOLD : usual.weight;
    font.lfCharSet = DEFAULT_CHARSET;
    usual.face.copy(font.lfFaceName, LF_FACESIZE - 1);
    return gdi::Font(::CreateFontIndirectW(&font));
}

LONG pixel(double position) {
    constexpr double farthest = 1e6;
    return static_cast<LONG>(std::lround(std::clamp(position, -farthest, farthest)));
}

}  // namespace

void ScreenCanvas::fill(const Box& box, Color color, double opacity) {
    sheet_.endSheet();
    platform::drawing::blend(pixels_.pixels(), {box.x, box.x + box.width}, {box.y, box.y + box.height}, color, opacity);
}

void ScreenCanvas::fill(const Box& box, SystemColor color, double opacity) { fill(box, colorOf(color), opacity); }

double ScreenCanvas::text(const Box& box, const std::string& text, TextStyle style, Color color) {
    sheet_.endSheet();
    const std::wstring wide = widen(text);
    const auto length = static_cast<int>(wide.size());
    const gdi::Font font = fontFor(style);
    const gdi::Selection selected(pixels_.context(), font.get());
    constexpr UINT broken = DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS;
    RECT place{pixel(box.x), pixel(box.y), pixel(box.x + box.width), pixel(box.y)};
    const LONG right = place.right;
    const int height = ::DrawTextW(pixels_.context(), wide.c_str(), length, &place, broken | DT_CALCRECT);
    place.right = right;
    place.bottom = std::min(place.bottom, pixel(box.y + box.height));
    ::SetBkMode(pixels_.context(), TRANSPARENT);
    ::SetTextColor(pixels_.context(), RGB(color.red, color.green, color.blue));
    ::DrawTextW(pixels_.context(), wide.c_str(), length, &place, broken);
    return height;
}

platform::Surface& ScreenCanvas::sheet(const platform::SheetView& view) {
    sheet_.endSheet();
    sheet_.beginSheet(pixels_.context(), pixels_.pixels(), view);
    return sheet_;
}

}  // namespace platform_windows::forms
