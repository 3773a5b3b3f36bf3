// Port: forms, windows with controls. What a form holds is written down in the core, what it does is a presenter's; a
// renderer shows it with the system's own controls and reports what the user does.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/canvas.h"
#include "platform/form_design.h"

namespace platform {

enum class PointerAction { moved, pressed, doubleClicked, released };
enum class PointerButton { none, left, middle };
enum class Cursor { arrow, text, hand, grabbing, wait };

// The mouse over a canvas; while a button is held also outside of it.
struct Pointer {
    PointerAction action = PointerAction::moved;
    PointerButton button = PointerButton::none;  // for moved: the one that is held
    double x = 0;                                // pixels of the canvas
    double y = 0;
    bool shift = false;
};

struct Wheel {
    double steps = 0;  // notches; away from the user is positive, and to the left
    bool across = false;
    bool control = false;
    double x = 0;  // where the pointer is
    double y = 0;
};

// A scroll bar of a canvas. It is to be seen where the whole is more than the page.
struct ScrollBar {
    int whole = 0;  // pixels
    int page = 0;   // of it, seen at once
    int position = 0;
};

// What the user did. None of these comes of a call of the form by the program, nor while one is under way.
class FormEvents {
public:
    virtual ~FormEvents() = default;

    // A button was pressed, or the key of a shortcut, or Enter in a box of a form without a default button; an option
    // button was chosen, another item of a list box, or an item of a drop-down list or combo box, be it the one that
    // was: so the first one, which stands for none as well, can be chosen. Other rows of a table are selected.
    virtual void clicked(const std::string& control) = 0;
    // What follows, a form without such controls or interests need not take.
    virtual void doubleClicked(const std::string& /*control*/) {}
    // The text of a box is another one.
    virtual void changed(const std::string& /*control*/) {}
    // A box got the focus.
    virtual void focused(const std::string& /*control*/) {}
    // Whether a box takes a character that is typed or pasted where the given text stands; 8 is the backspace.
    virtual bool accepts(const std::string& /*control*/, const std::string& /*text*/, char32_t /*character*/) {
        return true;
    }
    // A canvas has to be painted, the whole of it.
    virtual void paint(const std::string& /*control*/, Canvas& /*canvas*/) {}
    // A canvas has another size, or another screen.
    virtual void resized(const std::string& /*control*/) {}
    virtual void pointed(const std::string& /*control*/, const Pointer& /*pointer*/) {}
    virtual void wheeled(const std::string& /*control*/, const Wheel& /*wheel*/) {}
    // The user has moved a scroll bar of a canvas to these positions.
    virtual void scrolled(const std::string& /*control*/, int /*across*/, int /*down*/) {}
    // What stands in a cell of a table; rows and columns from 0. Asked for while the form is painted.
    virtual std::string cell(const std::string& /*table*/, int /*row*/, int /*column*/) { return {}; }
    // The time that Form::wantTimer() was told has passed once more.
    virtual void timer() {}
    // Nothing else is to be done, and Form::wantIdle() has asked for it.
    virtual void idle() {}
    // The form is gone; the last event.
    virtual void closed() {}
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
    // From 0; -1 where none is. An option button has one item, itself: choosing it takes the others of its group back.
    virtual int selected(const std::string& control) const = 0;
    virtual void select(const std::string& control, int index) = 0;

    virtual void setEnabled(const std::string& control, bool enabled) = 0;
    virtual void setTabStop(const std::string& control, bool stop) = 0;

    // The keyboard goes to this control.
    virtual void focus(const std::string& control) = 0;

    virtual CanvasSize canvasSize(const std::string& control) const = 0;
    // Lets a canvas be painted anew soon.
    virtual void invalidate(const std::string& control) = 0;
    virtual void setScrollBars(const std::string& control, ScrollBar across, ScrollBar down) = 0;
    virtual void setCursor(const std::string& control, Cursor cursor) = 0;

    // Gives a table so many rows and lets all cells be asked for anew. Which rows are selected and which is the first
    // one to be seen stays, by their numbers, as far as there are such rows.
    virtual void setRowCount(const std::string& table, int count) = 0;
    // In ascending order.
    virtual std::vector<int> selectedRows(const std::string& table) const = 0;
    // Selects just these, of which the last one gets the keyboard's mark; the first is scrolled into sight where asked
    // for.
    virtual void selectRows(const std::string& table, const std::vector<int>& rows, bool show) = 0;

    // Lets FormEvents::timer() be called every so many milliseconds while the form is to be seen, that is, neither
    // hidden nor minimised, and once when it is again; 0 for never.
    virtual void wantTimer(int milliseconds) = 0;

    // Whether FormEvents::idle() is to be called again and again.
    virtual void wantIdle(bool want) = 0;

    // Of a form that can be made larger. A place that lies on no screen any more is moved to one.
    virtual WindowPlace windowPlace() const = 0;
    virtual void setWindowPlace(const WindowPlace& place) = 0;

    // Lets the form be painted while the program has much to do, without any event that the user causes.
    virtual void repaint() = 0;
};

class Forms {
public:
    virtual ~Forms() = default;

    // Throws runtime::Error (errPermissionDenied) where there is no desktop to show it on. The events must live as long
    // as the form. Where it has an owner, it lies in front of it, and the owner takes no input until it is closed.
    virtual std::unique_ptr<Form> create(const FormDesign& design, FormEvents& events, Form* owner = nullptr) = 0;

    // Serves the forms until the last one is closed; returns at once where none is open. What an event throws closes
    // them all and comes out here.
    virtual void run() = 0;

    // Serves them with what has come meanwhile, and does not wait; for a form that shows how far something is, while
    // an event of another one is under way. What an event throws comes out of run().
    virtual void serve() = 0;

    // Closes every form that is open.
    virtual void closeAll() = 0;

    // Text for other programs to be pasted.
    virtual void copyText(const std::string& text) = 0;

    // Asks the user for the name of a file to be written, and where there is one already, whether it may be replaced.
    // Nothing where the user does not want it. The suggestion is a full path with this ending (".pdf"), which is added
    // to a name without one.
    virtual std::optional<std::string> askFileToWrite(Form& owner, const std::string& title,
                                                      const std::string& suggestion, const std::string& kindOfFile,
                                                      const std::string& ending) = 0;

    // Asks the user for a file that is there, beginning in this folder. Nothing where the user does not want any.
    virtual std::optional<std::string> askFileToRead(Form& owner, const std::string& title,
                                                     const std::string& folder) = 0;

    // Opens the folder of a file in the system's file manager, with the file marked where that can do so, and does not
    // wait. Whether there is a file manager.
    virtual bool showInFolder(const std::string& path) = 0;

    // Opens a new message in the user's mail program and does not wait. Whether there is one. A text that is too long
    // for the way to it is cut at the end of a line, and says so.
    virtual bool composeMail(const std::string& subject, const std::string& text) = 0;

    // Opens the system's own list of printers, without waiting for it. Where there is nothing of the kind, what to
    // install instead; otherwise empty.
    virtual std::string showPrinterFolder() = 0;
};

}  // namespace platform
