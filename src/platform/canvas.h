// Port: an area of a form that the program paints.
#pragma once

#include <string>

#include "platform/surface.h"

namespace platform {

// In pixels of the screen, from the area's top left corner, x to the right, y downwards. Parts of a pixel count.
struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

struct CanvasSize {
    int width = 0;  // pixels of the screen, scroll bars not included
    int height = 0;
    // Of the real screen as far as it is known, otherwise of what the system takes for it.
    double pixelsPerInchX = 96;
    double pixelsPerInchY = 96;
    double scale = 1;  // what texts and controls are larger by than at 96 pixels per inch
};

// A sheet of paper on the screen: where its printable area begins, and the size of a pixel of the printer.
struct SheetView {
    DeviceCapabilities device;
    bool color = true;  // false: everything is turned into shades of grey
    double left = 0;    // of the printable area, in pixels of the screen
    double top = 0;
    double scaleX = 1;  // pixels of the screen for a pixel of the printer
    double scaleY = 1;
};

enum class SystemColor {
    workspace,   // behind sheets of paper
    windowText,  // on it
    selection,   // of a text selected
};

enum class TextStyle { usual, heading };

// Only while FormEvents::paint() is under way.
class Canvas {
public:
    virtual ~Canvas() = default;

    virtual CanvasSize size() const = 0;

    // Opacity from 0 to 1.
    virtual void fill(const Box& box, Color color, double opacity) = 0;
    virtual void fill(const Box& box, SystemColor color, double opacity) = 0;

    // Writes a text, UTF-8, into the box in the font of dialogs, broken into lines; returns the height that it takes,
    // also beyond the box.
    virtual double text(const Box& box, const std::string& text, TextStyle style, Color color) = 0;

    // What is drawn on this surface appears on the sheet, as the printer would draw it, and only there: the same fonts,
    // places, sizes and colours, reduced or enlarged. It measures as the printer does. Good until the next call of the
    // canvas.
    virtual Surface& sheet(const SheetView& view) = 0;
};

}  // namespace platform
