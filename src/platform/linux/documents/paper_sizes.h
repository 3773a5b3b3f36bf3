// Paper sizes by the numbers of the printer driver's record (published values of dmPaperSize).
#pragma once

#include <optional>

#include "platform/print_document.h"

namespace platform_linux::documents {

inline constexpr int paperOwn = 256;  // the device's own size, one without a number

// Portrait, hundredths of a millimetre.
struct PaperSize {
    int number = platform::paperA4;
    int width = 21000;
    int height = 29700;
};

std::optional<PaperSize> paperSize(int number);

// The number of a size in points, within a millimetre; paperOwn for a size that has none.
int paperNumber(double widthPoints, double heightPoints);

double toPoints(int hundredthsOfMillimetre);

}  // namespace platform_linux::documents
