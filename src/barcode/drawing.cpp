#include "barcode/drawing.h"

#include <algorithm>
#include <limits>

namespace barcode {

namespace {

int toPixel(std::int64_t coordinate) {
    return static_cast<int>(
        std::clamp<std::int64_t>(coordinate, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

Box sheet(const platform::DeviceCapabilities& caps) {
    return {-caps.physicalOffsetX, -caps.physicalOffsetY, caps.physicalWidth, caps.physicalHeight};
}

bool isEmpty(const Box& box) { return box.width == 0 || box.height == 0; }

void drawBars(platform::Surface& surface, const MeasuredSymbol& symbol, const Turn& turn, platform::Color color) {
    const Box page = sheet(surface.capabilities());
    Box bar = symbol.layout.bars;
    bool isBar = true;
    for (const char digit : symbol.elements) {
        bar.width = symbol.widths.of(digit);
        if (isBar) {
            const Box seen = common(turn.onPage(bar), page);
            if (!isEmpty(seen)) {
                surface.fillRectangle(toPixel(seen.x), toPixel(seen.y), toPixel(seen.width), toPixel(seen.height),
                                      color);
            }
        }
        bar.x += bar.width;
        isBar = !isBar;
    }
}

void drawText(platform::Surface& surface, const MeasuredSymbol& symbol, const Turn& turn, platform::Color color) {
    const Box& text = symbol.layout.text;
    if (!isEmpty(common(turn.onPage(text), sheet(surface.capabilities())))) {
        const Point begin = turn.onPage(Point{text.x, text.y});
        surface.drawText(toPixel(begin.x), toPixel(begin.y), symbol.text, color, platform::TextRole::content);
    }
}

}  // namespace

void draw(platform::Surface& surface, const MeasuredSymbol& symbol, const Turn& turn, platform::Color color) {
    drawBars(surface, symbol, turn, color);
    if (!symbol.text.empty()) {
        drawText(surface, symbol, turn, color);
    }
}

}  // namespace barcode
