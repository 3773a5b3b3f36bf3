#include "preview/sheet_painting.h"

#include <algorithm>
#include <cmath>

namespace preview {

namespace {

using platform::Box;
using platform::Canvas;
using platform::Color;
using platform::TextStyle;

constexpr Color black{0, 0, 0};
constexpr Color white{255, 255, 255};
constexpr Color hitColor{255, 214, 0};
constexpr Color currentHitColor{255, 120, 0};
constexpr Color noticeColor{255, 244, 200};
constexpr Color noticeEdge{214, 190, 110};
constexpr Color reasonColor{60, 60, 60};

Box wider(const Box& box, double by) { return {box.x - by, box.y - by, box.width + 2 * by, box.height + 2 * by}; }

// What of the one box is outside of the other.
void fillAround(Canvas& canvas, const Box& outer, const Box& inner, double opacity) {
    const double top = std::max(outer.y, inner.y);
    const double bottom = std::min(outer.y + outer.height, inner.y + inner.height);
    const double right = std::min(outer.x + outer.width, inner.x + inner.width);
    const auto fill = [&](double x, double y, double width, double height) {
        if (width > 0 && height > 0) {
            canvas.fill({x, y, width, height}, black, opacity);
        }
    };
    fill(outer.x, outer.y, outer.width, top - outer.y);
    fill(outer.x, bottom, outer.width, outer.y + outer.height - bottom);
    fill(outer.x, top, inner.x - outer.x, bottom - top);
    fill(right, top, outer.x + outer.width - right, bottom - top);
}

void paintShadow(Canvas& canvas, const Box& sheet) {
    constexpr int steps = 4;
    constexpr double opacity = 0.07;
    const double step = std::max(1.0, std::round(canvas.size().scale));
    for (int i = steps; i > 0; --i) {
        Box shadow = wider(sheet, i * step - step);
        shadow.y += step;
        shadow.x += step;
        fillAround(canvas, shadow, sheet, opacity);
    }
}

// What the printer cannot reach.
void paintMargin(Canvas& canvas, const Box& sheet, const Box& printable) {
    constexpr double opacity = 0.045;
    fillAround(canvas, sheet, printable, opacity);
}

}  // namespace

void paintSheet(Canvas& canvas, const SheetLayout& layout, const SheetContent& content) {
    constexpr double markOpacity = 0.4;
    constexpr double currentOpacity = 0.5;
    constexpr double selectionOpacity = 0.35;
    const PreviewPage& page = *content.page;
    const Box sheet = layout.sheet();
    paintShadow(canvas, sheet);
    canvas.fill(sheet, white, 1);
    paintMargin(canvas, sheet, layout.printable());
    page.recording.play(canvas.sheet(layout.view(page.color)));
    for (const auto& area : content.hits) {
        canvas.fill(layout.boxOf(area), hitColor, markOpacity);
    }
    for (const auto& area : content.currentHit) {
        canvas.fill(wider(layout.boxOf(area), std::max(1.0, canvas.size().scale)), currentHitColor, currentOpacity);
    }
    for (const auto& area : content.selection) {
        canvas.fill(layout.boxOf(area), platform::SystemColor::selection, selectionOpacity);
    }
}

void paintMessage(Canvas& canvas, const Box& room, const PageMessage& message) {
    constexpr double mostWidth = 560;
    const double scale = canvas.size().scale;
    const double border = 12 * scale;
    const double inside = 24 * scale;
    const double width = std::max(1.0, std::min(room.width - 2 * border, mostWidth * scale));
    const Box panel{std::floor(room.x + (room.width - width) / 2), room.y + border, width,
                    std::max(1.0, room.height - 2 * border)};
    paintShadow(canvas, panel);
    canvas.fill(panel, white, 1);
    double y = panel.y + inside;
    const auto write = [&](const std::string& text, TextStyle style, Color color) {
        if (!text.empty()) {
            const Box place{panel.x + inside, y, std::max(1.0, width - 2 * inside),
                            std::max(1.0, panel.y + panel.height - y)};
            y += canvas.text(place, text, style, color) + inside / 2;
        }
    };
    write(message.heading, TextStyle::heading, black);
    write(message.reason, TextStyle::usual, black);
    write(message.remedy, TextStyle::usual, reasonColor);
}

double paintNotice(Canvas& canvas, const std::string& text) {
    if (text.empty()) {
        return 0;
    }
    const platform::CanvasSize size = canvas.size();
    const double inside = 6 * size.scale;
    const double edge = std::max(1.0, std::round(size.scale));
    const Box place{inside, inside, std::max(1.0, size.width - 2 * inside), static_cast<double>(size.height)};
    // Only writing tells how high it is; the strip covers it, and it is written again.
    const double height = std::ceil(canvas.text(place, text, TextStyle::usual, black) + 2 * inside);
    canvas.fill({0, 0, static_cast<double>(size.width), height}, noticeColor, 1);
    canvas.fill({0, height - edge, static_cast<double>(size.width), edge}, noticeEdge, 1);
    canvas.text(place, text, TextStyle::usual, black);
    return height;
}

}  // namespace preview
