#include "barcode/drawing.h"

#include <algorithm>
#include <limits>

namespace barcode {

namespace {

int toPixel(std::int64_t coordinate) {
    return static_cast<int>(
        std::clamp<std::int64_t>(coordinate, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

platform::drawing::Area visible(const platform::Surface& surface, const SymbolPlace& place,
                                const platform::drawing::Area& area) {
    return intersection(place.turn.toPage(place.origin, area), platform::drawing::sheetOf(surface.capabilities()));
}

void drawBars(platform::Surface& surface, const MeasuredSymbol& symbol, const SymbolPlace& place,
              platform::Color color) {
    platform::drawing::Area bar = symbol.layout.bars;
    bool isBar = true;
    for (const char digit : symbol.elements) {
        bar.across.end = bar.across.start + symbol.widths.of(digit);
        if (isBar) {
            const platform::drawing::Area seen = visible(surface, place, bar);
            if (!seen.empty()) {
                surface.fillRectangle(toPixel(seen.across.start), toPixel(seen.down.start),
                                      toPixel(seen.across.end - seen.across.start),
                                      toPixel(seen.down.end - seen.down.start), color);
            }
        }
        bar.across.start = bar.across.end;
        isBar = !isBar;
    }
}

void drawText(platform::Surface& surface, const MeasuredSymbol& symbol, const SymbolPlace& place,
              platform::Color color) {
    const platform::drawing::Area& text = symbol.layout.text;
    if (!visible(surface, place, text).empty()) {
        const platform::drawing::Point begin =
            place.turn.toPage(place.origin, platform::drawing::Point{text.across.start, text.down.start});
        surface.drawText(toPixel(begin.x), toPixel(begin.y), symbol.text, color, platform::TextRole::content);
    }
}

}  // namespace

void draw(platform::Surface& surface, const MeasuredSymbol& symbol, const SymbolPlace& place, platform::Color color) {
    drawBars(surface, symbol, place, color);
    if (!symbol.text.empty()) {
        drawText(surface, symbol, place, color);
    }
}

}  // namespace barcode
