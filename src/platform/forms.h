// Port: forms, windows with controls. What a form holds is written down in the core, what it does is a presenter's; a
// renderer shows it with the system's own controls and reports what the user does.
#pragma once

#include <memory>
#include <string>
#include <vector>

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
    button,
};

struct Control {
    ControlKind kind = ControlKind::label;
    std::string name;     // unique in its form
    std::string caption;  // "&" marks the access key
    std::string tooltip;  // may be empty
    Place place;
};

// Everything of a form that does not change.
struct FormDesign {
    std::string name;
    std::string title;
    int width = 0;                  // of the room inside the frame, in dialog units
    std::vector<Control> controls;  // in tab order
    std::string defaultButton;      // Enter presses it
    std::string cancelButton;       // Esc and the frame's closing press it
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

// What the user did. None of these comes of a call of the form by the program, nor while one is under way.
class FormEvents {
public:
    virtual ~FormEvents() = default;

    // A button was pressed, another item of a list box chosen, or an item of a drop-down list, be it the one that was:
    // so the first one, which stands for none as well, can be chosen.
    virtual void clicked(const std::string& control) = 0;
    virtual void doubleClicked(const std::string& control) = 0;
    // The text of a box is another one.
    virtual void changed(const std::string& control) = 0;
    // A box got the focus.
    virtual void focused(const std::string& control) = 0;
    // Whether a box takes a character that is typed or pasted where the given text stands; 8 is the backspace.
    virtual bool accepts(const std::string& control, const std::string& text, char32_t character) = 0;
    // The form is gone; the last event.
    virtual void closed() = 0;
};

// One form on the screen; gone when it is destroyed, which none of its events may do. Controls are called by their
// names; a name that the design lacks does nothing. Text is UTF-8. Never throws but for std::bad_alloc.
class Form {
public:
    virtual ~Form() = default;

    // Shows the form in front of the window that the user works in, where the desktop allows it, and does not wait.
    virtual void show() = 0;
    // Ends the form as soon as the event under way is over.
    virtual void close() = 0;

    virtual void setTitle(const std::string& title) = 0;
    virtual void setHeight(FormHeight height) = 0;

    // The content of a box, the caption of anything else.
    virtual std::string text(const std::string& control) const = 0;
    virtual void setText(const std::string& control, const std::string& text) = 0;
    virtual void selectText(const std::string& control) = 0;

    // Replaces the items of a list; none is selected then. An "&" in an item is just that.
    virtual void setItems(const std::string& control, const std::vector<std::string>& items) = 0;
    virtual int selected(const std::string& control) const = 0;  // from 0; -1 where none is
    virtual void select(const std::string& control, int index) = 0;

    virtual void setEnabled(const std::string& control, bool enabled) = 0;
    virtual void setTabStop(const std::string& control, bool stop) = 0;

    // Lets the form be painted while the program has much to do, without any event that the user causes.
    virtual void repaint() = 0;
};

class Forms {
public:
    virtual ~Forms() = default;

    // Throws runtime::Error (errPermissionDenied) where there is no desktop to show it on. The events must live as long
    // as the form.
    virtual std::unique_ptr<Form> create(const FormDesign& design, FormEvents& events) = 0;

    // Serves the forms until the last one is closed; returns at once where none is open. What an event throws closes
    // them all and comes out here.
    virtual void run() = 0;

    // Closes every form that is open.
    virtual void closeAll() = 0;

    // Opens the system's own list of printers, without waiting for it. Where there is nothing of the kind, what to
    // install instead; otherwise empty.
    virtual std::string showPrinterFolder() = 0;
};

}  // namespace platform
