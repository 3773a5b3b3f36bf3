// Where a sheet of paper lies in the area that shows it: reckoning with sizes and places, nothing else.
#pragma once

#include "platform/canvas.h"
#include "platform/drawing/page_area.h"
#include "platform/forms.h"
#include "preview/zoom.h"

namespace preview {

// A point of the page in pixels of the printer, parts of them included.
struct PagePoint {
    double x = 0;
    double y = 0;
};

// A sheet at a zoom, with some workspace around it, scrolled where it is larger than the room that it has: the canvas
// below its upper part, which something else may take. 100 % is the paper's real size on the screen.
class SheetLayout {
public:
    SheetLayout() = default;

    // Keeps the place of the scroll bars as far as there is one.
    void fit(const platform::CanvasSize& canvas, double taken, const platform::DeviceCapabilities& device,
             const Zoom& zoom);

    double percent() const { return percent_; }
    const platform::Box& room() const { return room_; }

    platform::ScrollBar across() const;
    platform::ScrollBar down() const;
    // To these positions, as far as they exist.
    void scrollTo(double across, double down);
    void scrollBy(double across, double down) { scrollTo(across_ + across, down_ + down); }
    // Shows a point of the page at a place of the canvas, as far as it can be scrolled there.
    void bring(PagePoint point, double x, double y);
    // Scrolls so far that all of it is seen, if there is room for it.
    void reveal(const platform::drawing::Area& area);

    platform::Box sheet() const;
    platform::Box printable() const;
    platform::Box boxOf(const platform::drawing::Area& area) const;
    PagePoint pagePointAt(double x, double y) const;
    platform::drawing::Point pixelAt(double x, double y) const;
    platform::SheetView view(bool color) const;

private:
    double chosenPercent(const Zoom& zoom, bool hadBar) const;
    double border() const;
    double wholeWidth() const;
    double wholeHeight() const;

    platform::Box room_;
    platform::DeviceCapabilities device_;
    double unitX_ = 1;  // pixels of the screen for one of the printer, at real size
    double unitY_ = 1;
    double uiScale_ = 1;
    double percent_ = 100;
    double across_ = 0;  // whole pixels
    double down_ = 0;
};

}  // namespace preview
