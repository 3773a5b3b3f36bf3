// Paper sizes by the numbers of the printer driver's record (published values of dmPaperSize).
#pragma once

#include <optional>

#include "platform/drawing/page_options.h"

namespace platform::drawing {

inline constexpr int paperOwn = 256;  // the device's own size, one without a number

// Hundredths of a millimetre.
struct PaperSize {
    int number = paperA4;
    int width = 21000;
    int height = 29700;
};

// Portrait.
std::optional<PaperSize> paperSize(int number);

// The sheet as the page has it; A4 where the size has no number.
PaperSize paperOf(const PageOptions& options);

// The number of a size in points, within a millimetre; paperOwn for a size that has none.
int paperNumber(double widthPoints, double heightPoints);

double toPoints(int hundredthsOfMillimetre);

}  // namespace platform::drawing
