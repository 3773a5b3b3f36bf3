#include "platform/windows/forms/shortcut_keys.h"

#include <algorithm>

namespace platform_windows::forms {

namespace {

using platform::Key;
using platform::Shortcut;

struct Codes {
    WPARAM usual;
    WPARAM other;  // of another block of keys
};

constexpr Codes single(WPARAM code) { return {code, code}; }

Codes codesOf(Key key) {
    switch (key) {
        case Key::pageUp:
            return single(VK_PRIOR);
        case Key::pageDown:
            return single(VK_NEXT);
        case Key::home:
            return single(VK_HOME);
        case Key::end:
            return single(VK_END);
        case Key::left:
            return single(VK_LEFT);
        case Key::right:
            return single(VK_RIGHT);
        case Key::up:
            return single(VK_UP);
        case Key::down:
            return single(VK_DOWN);
        case Key::f3:
            return single(VK_F3);
        case Key::f5:
            return single(VK_F5);
        case Key::deleteKey:
            return single(VK_DELETE);
        case Key::plus:
            return {VK_OEM_PLUS, VK_ADD};
        case Key::minus:
            return {VK_OEM_MINUS, VK_SUBTRACT};
        case Key::digit0:
            return {'0', VK_NUMPAD0};
        case Key::letterA:
            return single('A');
        case Key::letterC:
            return single('C');
        case Key::letterF:
            return single('F');
        case Key::letterG:
            return single('G');
        case Key::letterO:
            return single('O');
        case Key::letterP:
            return single('P');
        case Key::letterS:
            break;
    }
    return single('S');
}

bool isDown(int key) { return ::GetKeyState(key) < 0; }

bool isPressed(const Shortcut& shortcut, WPARAM code) {
    const Codes codes = codesOf(shortcut.key);
    if (code != codes.usual && code != codes.other) {
        return false;
    }
    // Some keyboards have the plus where shift is needed for it.
    const bool anyShift = shortcut.key == Key::plus;
    return isDown(VK_CONTROL) == shortcut.control && (anyShift || isDown(VK_SHIFT) == shortcut.shift);
}

}  // namespace

const Shortcut* shortcutOf(const std::vector<Shortcut>& shortcuts, const MSG& message, bool inBox) {
    // With Ctrl, Alt is the key for a third character.
    if (message.message != WM_KEYDOWN || isDown(VK_MENU)) {
        return nullptr;
    }
    const auto found = std::find_if(shortcuts.begin(), shortcuts.end(), [&](const Shortcut& shortcut) {
        return (shortcut.inBoxes || !inBox) && isPressed(shortcut, message.wParam);
    });
    return found != shortcuts.end() ? &*found : nullptr;
}

}  // namespace platform_windows::forms
