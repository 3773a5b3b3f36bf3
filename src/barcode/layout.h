// Where the pieces of a symbol lie. Pixels; first in the symbol's own coordinates, x along the elements from the first
// bar on and y across them from the top of the symbol, then on the page. 64 bits: no symbol is too long to be measured.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/drawing/page_area.h"

namespace barcode {

enum class TextPlacement { none, above, below };
enum class TextAlignment { left, centre, right };

struct Size {
    std::int64_t width = 0;
    std::int64_t height = 0;
};

// Width in pixels of the narrow element, given in 1/600 inch: rounded, at least 1 whatever is given.
std::int64_t narrowWidth(double sixHundredths, int pixelsPerInch);

// Widths in pixels of elements by their digit: "1" is one narrow element, "2" to "4" the digit times the narrow element
// times the ratio, rounded. Equal digits are equal in pixels.
class ElementWidths {
public:
    ElementWidths(std::int64_t narrow, double ratio);

    std::int64_t of(char digit) const { return widths_[static_cast<std::size_t>(digit - '1')]; }
    std::int64_t sum(std::string_view elements) const;

private:
    std::array<std::int64_t, 4> widths_;
};

struct Layout {
    Size total;
    platform::drawing::Area bars;
    platform::drawing::Area text;
};

struct TextPlace {
    TextPlacement placement = TextPlacement::none;
    TextAlignment alignment = TextAlignment::centre;
    std::int64_t gap = 0;  // between bars and text
    Size size;             // of the text
};

// The longer one of bars and text determines the symbol's length, the shorter one is aligned within it.
Layout layOut(const Size& bars, const TextPlace& text);

// Where a symbol's own coordinates begin on the page, so that the box that it takes there, turned, has its top left
// corner at the given point.
platform::drawing::Point originOnPage(platform::drawing::Turn turn, platform::drawing::Point corner,
                                      const Size& symbol);

}  // namespace barcode
