// The part of the preview that shows a page: scrolling, zooming, moving the sheet and selecting its text.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/forms.h"
#include "platform/system.h"
#include "preview/preview_pages.h"
#include "preview/sheet_layout.h"
#include "preview/sheet_painting.h"
#include "preview/text_selection.h"
#include "preview/zoom.h"

namespace preview {

class SheetPane {
public:
    // The page to be shown; null where there is none. It is asked for each time.
    using PageShown = std::function<const PreviewPage*()>;
    enum class Start { top, bottom, unchanged };

    // All are borrowed.
    SheetPane(platform::Form& form, platform::System& system, PageShown page);

    const Zoom& zoom() const { return zoom_; }
    double percent() const { return layout_.percent(); }
    // The middle of the view stays where it is.
    void setZoom(const Zoom& zoom);

    // Another page is to be shown, or the same one again.
    void pageChanged(Start start);
    // What is said instead of a page; nothing where there is one.
    void say(std::optional<PageMessage> message);
    // What is said above all pages.
    void notice(const std::string& text);
    // Where the page has what was found, and the one that was gone to.
    void mark(std::vector<platform::drawing::Area> hits, std::vector<platform::drawing::Area> current);
    void revealCurrentMark();

    void paint(platform::Canvas& canvas);
    void resized() { arrange(); }
    void pointed(const platform::Pointer& pointer);
    void scrolled(int across, int down);
    // Both return whether to turn to the next page (1), the previous one (-1), or none.
    int wheeled(const platform::Wheel& wheel);
    // In lines, as arrow keys go.
    int moveBy(int across, int down);

    void selectAll();
    // Bytes of the DOS code page, lines ended by "\n"; empty where nothing is selected.
    std::string selectedText() const;

    // Whether there is a page, and not what is said instead.
    bool showsSheet() const { return sheetShown() != nullptr; }

    // Whether idle() has something to do.
    bool busy() const { return scrollsBySelection_ || noticeMoved_; }
    void idle();

private:
    enum class Drag { none, sheet, text };

    const PreviewPage* sheetShown() const;
    void arrange();
    void moved();
    void refresh() { form_.invalidate(canvas); }
    void zoomAbout(const Zoom& zoom, double x, double y);
    int turnAtEnd(double steps);
    bool hasTextAt(double x, double y) const;
    void press(const platform::Pointer& pointer);
    void drag(const platform::Pointer& pointer);
    void selectTo(double x, double y);
    void setCursor(double x, double y);
    SheetContent content() const;

    static constexpr const char* canvas = "picSeite";

    platform::Form& form_;
    platform::System& system_;
    PageShown page_;
    Zoom zoom_;
    SheetLayout layout_;
    double uiScale_ = 1;
    std::optional<PageMessage> message_;
    std::string notice_;
    double noticeHeight_ = 0;
    bool noticeMoved_ = false;  // it takes more or less room than the layout has left for it
    std::vector<platform::drawing::Area> hits_;
    std::vector<platform::drawing::Area> currentHit_;
    TextSelection selection_;
    Drag drag_ = Drag::none;
    double dragX_ = 0;  // where the pointer was
    double dragY_ = 0;
    bool scrollsBySelection_ = false;
    std::int64_t scrolledAt_ = 0;
    double wheelRest_ = 0;
    std::optional<platform::Cursor> cursor_;
};

}  // namespace preview
