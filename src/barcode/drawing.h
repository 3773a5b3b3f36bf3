// Draws the bars and the human-readable text of a symbol.
#pragma once

#include <string>

#include "barcode/layout.h"
#include "platform/surface.h"

namespace barcode {

struct MeasuredSymbol {
    std::string elements;  // as Symbol has them
    ElementWidths widths;
    std::string text;  // empty where none is drawn
    Layout layout;
};

// Where a symbol lies on the page: its own coordinates begin at the origin.
struct SymbolPlace {
    platform::drawing::Turn turn;
    platform::drawing::Point origin;
};

// What lies beyond the sheet is not handed to the surface. Text is drawn in the font that is selected, which must be
// turned as the symbol is.
void draw(platform::Surface& surface, const MeasuredSymbol& symbol, const SymbolPlace& place, platform::Color color);

}  // namespace barcode
