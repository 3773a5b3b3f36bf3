// What a form holds, written down once: its controls with their places, and the keys that it answers to.
#pragma once

#include <string>
#include <vector>

#include "platform/symbol.h"

namespace platform {

// In dialog units: across a quarter of the mean width, down an eighth of the height of the characters of the font in
// which the system shows dialogs. So texts fit in every font and at every scale.
struct Place {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

enum class ControlKind {
    label,         // names the control behind it where that has no caption of its own
    textBox,       // one line
    listBox,       // one item selected
    dropDownList,  // one item selected, of those offered
    comboBox,      // one line, with items to take instead of typing
    optionButton,  // one chosen of those that follow each other; its caption is beside it
    button,
    toolButton,  // a flat button with a symbol; takes no focus; the caption is its name for screen readers
    canvas,      // the program paints it; takes the focus, and may have scroll bars
    textView,    // many lines to be read, selected and copied, in a font whose characters are equally wide
    table,       // rows whose texts the program gives when they are to be seen; any number of them selected
};

// What becomes of a control when the user makes the form larger than it was designed.
enum class Sizing {
    fixed,       // nothing
    fill,        // it grows across and down
    bottom,      // it stays at the lower edge
    bottomLine,  // it stays at the lower edge, and grows across
};

// Of a table. The user may make it wider or narrower.
struct Column {
    std::string title;
    int width = 0;  // dialog units
    bool alignedRight = false;
};

struct Control {
    ControlKind kind = ControlKind::label;
    std::string name;     // unique in its form
    std::string caption;  // "&" marks the access key
    std::string tooltip;  // may be empty
    Place place;
    Sizing sizing = Sizing::fixed;
    Symbol symbol{};                // of a toolButton
    std::vector<Column> columns{};  // of a table
};

enum class Key {
    pageUp,
    pageDown,
    home,
    end,
    left,
    right,
    up,
    down,
    f3,
    f5,
    deleteKey,
    plus,   // of either block of keys
    minus,  // likewise
    digit0,
    letterA,
    letterC,
    letterF,
    letterG,
    letterO,
    letterP,
    letterS,
};

// A key that does the same as a click on the control, or on one that there is not: FormEvents::clicked(action).
struct Shortcut {
    Key key = Key::home;
    bool control = false;
    bool shift = false;
    std::string action;
    // Whether it counts while a box has the focus, in which the key may mean something else. A table is none: its own
    // keys are those that move in it, and Ctrl+A.
    bool inBoxes = true;
};

// Everything of a form that does not change.
struct FormDesign {
    std::string name;
    std::string title;
    int width = 0;                  // of the room inside the frame, in dialog units
    std::vector<Control> controls;  // in tab order
    std::string defaultButton;      // Enter presses it
    std::string cancelButton;       // Esc and the frame's closing press it
    // Of the room inside the frame, in dialog units. 0: as setHeight() says.
    int height = 0;
    // The user may make it larger, and maximize it. The size designed is the smallest.
    bool resizable = false;
    std::vector<Shortcut> shortcuts{};
};

// How much of a form is to be seen.
struct FormHeight {
    // Twips (20 to the point, 15 to a pixel at 96 dpi) in the system's usual font: of the whole window where the
    // program decides about its frame (Windows), of the room inside the frame elsewhere. It grows with scale and font.
    int twips = 0;
    // The least that is seen in any font, in dialog units. Controls that begin below it are hidden: they take no focus
    // and no access key, and where there is more room none of them is seen in part.
    int visible = 0;
};

// Where a window lies, in pixels of the desktop; the size is that of the room inside the frame.
struct WindowPlace {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool maximized = false;  // the rest says then where it lies when it is not

    bool operator==(const WindowPlace&) const = default;
};

}  // namespace platform
