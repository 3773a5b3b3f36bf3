#include "platform/windows/forms/tool_look.h"

#include <uxtheme.h>

#include "platform/windows/system_library.h"

namespace platform_windows::forms {

namespace {

// The headers have them for newer systems only.
constexpr int toolBarButton = 1;
constexpr int hotState = 2;
constexpr int pressedState = 3;

struct Theme {
    HMODULE library = systemLibrary(L"uxtheme.dll");
    decltype(&::OpenThemeData) open = functionOf<decltype(&::OpenThemeData)>(library, "OpenThemeData");
    decltype(&::DrawThemeBackground) draw =
        functionOf<decltype(&::DrawThemeBackground)>(library, "DrawThemeBackground");
    decltype(&::CloseThemeData) close = functionOf<decltype(&::CloseThemeData)>(library, "CloseThemeData");
};

bool drawnByTheme(HWND button, HDC to, const RECT& room, bool pressed) {
    static const Theme theme;
    const bool known = theme.open != nullptr && theme.draw != nullptr && theme.close != nullptr;
    const HTHEME tools = known ? theme.open(button, L"TOOLBAR") : nullptr;
    if (tools == nullptr) {
        return false;
    }
    const HRESULT drawn = theme.draw(tools, to, toolBarButton, pressed ? pressedState : hotState, &room, nullptr);
    theme.close(tools);
    return SUCCEEDED(drawn);
}

}  // namespace

void drawToolFrame(HWND button, HDC to, RECT room, bool pressed) {
    if (!drawnByTheme(button, to, room, pressed)) {
        ::DrawEdge(to, &room, pressed ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
    }
}

}  // namespace platform_windows::forms
