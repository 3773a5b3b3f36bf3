#include "platform/linux/qt/shortcut_keys.h"

#include <algorithm>

namespace platform_linux::qt {

namespace {

using platform::Key;
using platform::Shortcut;

int codeOf(Key key) {
    switch (key) {
        case Key::pageUp:
            return Qt::Key_PageUp;
        case Key::pageDown:
            return Qt::Key_PageDown;
        case Key::home:
            return Qt::Key_Home;
        case Key::end:
            return Qt::Key_End;
        case Key::left:
            return Qt::Key_Left;
        case Key::right:
            return Qt::Key_Right;
        case Key::up:
            return Qt::Key_Up;
        case Key::down:
            return Qt::Key_Down;
        case Key::f3:
            return Qt::Key_F3;
        case Key::f5:
            return Qt::Key_F5;
        case Key::deleteKey:
            return Qt::Key_Delete;
        case Key::plus:
            return Qt::Key_Plus;
        case Key::minus:
            return Qt::Key_Minus;
        case Key::digit0:
            return Qt::Key_0;
        case Key::letterA:
            return Qt::Key_A;
        case Key::letterC:
            return Qt::Key_C;
        case Key::letterF:
            return Qt::Key_F;
        case Key::letterG:
            return Qt::Key_G;
        case Key::letterO:
            return Qt::Key_O;
        case Key::letterP:
            return Qt::Key_P;
        case Key::letterS:
            break;
    }
    return Qt::Key_S;
}

bool isPressed(const Shortcut& shortcut, const QKeyEvent& event) {
    const bool isPlus = shortcut.key == Key::plus;
    // Some keyboards have the plus where shift is needed for it.
    const bool isKey =
        event.key() == codeOf(shortcut.key) || (isPlus && shortcut.control && event.key() == Qt::Key_Equal);
    const Qt::KeyboardModifiers held = event.modifiers();
    return isKey && held.testFlag(Qt::ControlModifier) == shortcut.control &&
           (isPlus || held.testFlag(Qt::ShiftModifier) == shortcut.shift);
}

}  // namespace

const Shortcut* shortcutOf(const std::vector<Shortcut>& shortcuts, const QKeyEvent& event, bool inBox) {
    if ((event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) != 0) {
        return nullptr;
    }
    const auto found = std::find_if(shortcuts.begin(), shortcuts.end(), [&](const Shortcut& shortcut) {
        return (shortcut.inBoxes || !inBox) && isPressed(shortcut, event);
    });
    return found != shortcuts.end() ? &*found : nullptr;
}

}  // namespace platform_linux::qt
