#include "preview/sheet_pane.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace preview {

namespace {

using platform::PointerAction;
using platform::PointerButton;

constexpr double lineAtUsualScale = 20;  // pixels
constexpr double linesPerNotch = 3;

}  // namespace

SheetPane::SheetPane(platform::Form& form, platform::System& system, PageShown page)
    : form_(form), system_(system), page_(std::move(page)) {}

const PreviewPage* SheetPane::sheetShown() const { return message_ ? nullptr : page_(); }

void SheetPane::arrange() {
    const PreviewPage* const page = sheetShown();
    noticeMoved_ = false;
    platform::CanvasSize size = form_.canvasSize(canvas);
    uiScale_ = size.scale;
    if (page == nullptr) {
        form_.setScrollBars(canvas, {}, {});
        refresh();
        return;
    }
    // Scroll bars that come or go change the room that is left.
    for (int i = 0; i < 2; ++i) {
        layout_.fit(size, noticeHeight_, page->device, zoom_);
        form_.setScrollBars(canvas, layout_.across(), layout_.down());
        const platform::CanvasSize now = form_.canvasSize(canvas);
        if (now.width == size.width && now.height == size.height) {
            break;
        }
        size = now;
        layout_.fit(size, noticeHeight_, page->device, zoom_);
    }
    refresh();
}

void SheetPane::moved() {
    if (showsSheet()) {
        form_.setScrollBars(canvas, layout_.across(), layout_.down());
    }
    refresh();
}

void SheetPane::setZoom(const Zoom& zoom) {
    const platform::Box& room = layout_.room();
    zoomAbout(zoom, room.x + room.width / 2, room.y + room.height / 2);
}

void SheetPane::zoomAbout(const Zoom& zoom, double x, double y) {
    const PagePoint point = layout_.pagePointAt(x, y);
    zoom_ = zoom;
    arrange();
    layout_.bring(point, x, y);
    moved();
}

void SheetPane::pageChanged(Start start) {
    selection_.clear();
    drag_ = Drag::none;
    scrollsBySelection_ = false;
    wheelRest_ = 0;
    hits_.clear();
    currentHit_.clear();
    arrange();
    if (start != Start::unchanged && page_() != nullptr) {
        layout_.scrollTo(layout_.across().position, start == Start::top ? 0 : layout_.down().whole);
        moved();
    }
}

void SheetPane::say(std::optional<PageMessage> message) {
    message_ = std::move(message);
    // Which screen readers read.
    form_.setText(canvas, message_ ? message_->heading + " " + message_->reason + " " + message_->remedy : "Seite");
}

void SheetPane::notice(const std::string& text) {
    notice_ = text;
    refresh();
}

void SheetPane::mark(std::vector<platform::drawing::Area> hits, std::vector<platform::drawing::Area> current) {
    hits_ = std::move(hits);
    currentHit_ = std::move(current);
    refresh();
}

void SheetPane::revealCurrentMark() {
    if (!currentHit_.empty()) {
        layout_.reveal(currentHit_.front());
        moved();
    }
}

SheetContent SheetPane::content() const {
    const PreviewPage* const page = page_();
    if (page == nullptr) {
        return {};
    }
    return {page, hits_, currentHit_, selection_.areasOf(page->text)};
}

void SheetPane::paint(platform::Canvas& painted) {
    const platform::CanvasSize size = painted.size();
    painted.fill({0, 0, static_cast<double>(size.width), static_cast<double>(size.height)},
                 platform::SystemColor::workspace, 1);
    const auto paintNoticeNow = [&] {
        const double height = paintNotice(painted, notice_);
        noticeMoved_ = noticeMoved_ || std::abs(height - std::exchange(noticeHeight_, height)) >= 1;
    };
    if (message_) {
        paintMessage(painted, {0, noticeHeight_, static_cast<double>(size.width), size.height - noticeHeight_},
                     *message_);
    } else if (const SheetContent sheet = content(); sheet.page != nullptr) {
        paintSheet(painted, layout_, sheet);
    }
    paintNoticeNow();
}

void SheetPane::scrolled(int across, int down) {
    layout_.scrollTo(across, down);
    refresh();
}

int SheetPane::wheeled(const platform::Wheel& wheel) {
    constexpr double perNotch = 1.2;
    if (wheel.control) {
        zoomAbout(Zoom::of(layout_.percent() * std::pow(perNotch, wheel.steps)), wheel.x, wheel.y);
        return 0;
    }
    if (!showsSheet()) {
        return wheel.across ? 0 : turnAtEnd(-wheel.steps);
    }
    const double distance = -wheel.steps * linesPerNotch * lineAtUsualScale * uiScale_;
    if (wheel.across) {
        layout_.scrollBy(distance, 0);
    } else {
        const int before = layout_.down().position;
        layout_.scrollBy(0, distance);
        if (layout_.down().position == before) {
            return turnAtEnd(-wheel.steps);
        }
        wheelRest_ = 0;
    }
    moved();
    return 0;
}

// A wheel may report parts of a notch; only a whole one turns a page.
int SheetPane::turnAtEnd(double steps) {
    constexpr double almostOne = 0.999;
    wheelRest_ = wheelRest_ * steps < 0 ? steps : wheelRest_ + steps;
    if (std::abs(wheelRest_) < almostOne) {
        return 0;
    }
    return std::exchange(wheelRest_, 0) > 0 ? 1 : -1;
}

int SheetPane::moveBy(int across, int down) {
    if (!showsSheet()) {
        return across + down;
    }
    const platform::ScrollBar wasAcross = layout_.across();
    const platform::ScrollBar wasDown = layout_.down();
    const double line = 2 * lineAtUsualScale * uiScale_;
    layout_.scrollBy(across * line, down * line);
    moved();
    if (down != 0) {
        return layout_.down().position == wasDown.position ? down : 0;
    }
    // Where a sheet can be moved across, its edge is no reason to leave the page.
    return wasAcross.whole == 0 ? across : 0;
}

void SheetPane::selectAll() {
    if (const PreviewPage* const page = sheetShown(); page != nullptr) {
        selection_.set({page->text.begin(), page->text.end()});
        refresh();
    }
}

std::string SheetPane::selectedText() const {
    const PreviewPage* const page = sheetShown();
    return page != nullptr ? selection_.textOf(page->text) : std::string();
}

bool SheetPane::hasTextAt(double x, double y) const {
    const PreviewPage* const page = sheetShown();
    return page != nullptr && page->text.hasTextAt(layout_.pixelAt(x, y));
}

void SheetPane::pointed(const platform::Pointer& pointer) {
    switch (pointer.action) {
        case PointerAction::pressed:
            press(pointer);
            break;
        case PointerAction::doubleClicked:
            if (hasTextAt(pointer.x, pointer.y)) {
                const PageText& text = page_()->text;
                selection_.set(text.wordAt(text.positionAt(layout_.pixelAt(pointer.x, pointer.y))));
                refresh();
            }
            break;
        case PointerAction::moved:
            drag(pointer);
            break;
        case PointerAction::released:
            drag_ = Drag::none;
            scrollsBySelection_ = false;
            break;
    }
    setCursor(pointer.x, pointer.y);
}

void SheetPane::press(const platform::Pointer& pointer) {
    dragX_ = pointer.x;
    dragY_ = pointer.y;
    drag_ = Drag::sheet;
    if (pointer.button != PointerButton::left || message_) {
        return;
    }
    const bool extends = pointer.shift && selection_.begun();
    if (extends || hasTextAt(pointer.x, pointer.y)) {
        drag_ = Drag::text;
        if (!extends) {
            selection_.begin(page_()->text.positionAt(layout_.pixelAt(pointer.x, pointer.y)));
        }
        selectTo(pointer.x, pointer.y);
    } else {
        selection_.clear();
        refresh();
    }
}

void SheetPane::drag(const platform::Pointer& pointer) {
    if (drag_ == Drag::none) {
        return;
    }
    const double fromX = std::exchange(dragX_, pointer.x);
    const double fromY = std::exchange(dragY_, pointer.y);
    if (drag_ == Drag::sheet) {
        layout_.scrollBy(fromX - pointer.x, fromY - pointer.y);
        moved();
        return;
    }
    const platform::Box& room = layout_.room();
    const bool outside = pointer.x < room.x || pointer.y < room.y || pointer.x >= room.x + room.width ||
                         pointer.y >= room.y + room.height;
    if (outside && !scrollsBySelection_) {
        scrolledAt_ = system_.elapsedMilliseconds();
    }
    scrollsBySelection_ = outside;
    selectTo(pointer.x, pointer.y);
}

void SheetPane::selectTo(double x, double y) {
    if (const PreviewPage* const page = page_(); page != nullptr) {
        selection_.extendTo(page->text.positionAt(layout_.pixelAt(x, y)));
        refresh();
    }
}

void SheetPane::idle() {
    if (noticeMoved_) {
        arrange();
    }
    if (!scrollsBySelection_) {
        return;
    }
    // The farther outside, the faster: the distance in a tenth of a second.
    constexpr double milliseconds = 100;
    const std::int64_t now = system_.elapsedMilliseconds();
    const double share = static_cast<double>(now - scrolledAt_) / milliseconds;
    const platform::Box& room = layout_.room();
    const auto beyond = [](double place, double start, double length) {
        return std::min(0.0, place - start) + std::max(0.0, place - start - length);
    };
    const double across = beyond(dragX_, room.x, room.width) * share;
    const double down = beyond(dragY_, room.y, room.height) * share;
    if (std::abs(across) < 1 && std::abs(down) < 1) {
        return;
    }
    scrolledAt_ = now;
    layout_.scrollBy(across, down);
    moved();
    selectTo(dragX_, dragY_);
}

void SheetPane::setCursor(double x, double y) {
    using platform::Cursor;
    const bool movable = !message_ && (layout_.across().whole > 0 || layout_.down().whole > 0);
    Cursor cursor = movable ? Cursor::hand : Cursor::arrow;
    if (drag_ == Drag::sheet) {
        cursor = movable ? Cursor::grabbing : Cursor::arrow;
    } else if (drag_ == Drag::text || hasTextAt(x, y)) {
        cursor = Cursor::text;
    }
    if (cursor_ != cursor) {
        cursor_ = cursor;
        form_.setCursor(canvas, cursor);
    }
}

}  // namespace preview
