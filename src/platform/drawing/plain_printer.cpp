#include "platform/drawing/plain_printer.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "platform/drawing/paper_sizes.h"

namespace platform::drawing {

namespace {

constexpr int resolution = 600;

// Whole pairs of pixels, as raster drivers have it: A4 is 4960 x 7016.
int pixels(int hundredthsOfMillimetre) {
    return 2 * static_cast<int>(std::lround(hundredthsOfMillimetre * resolution / 2540.0 / 2.0));
}

}  // namespace

bool plainPrinterAccepts(PageOption option, int value) {
    switch (option) {
        case PageOption::paperSize:
            return value == paperOwn || paperSize(value).has_value();
        case PageOption::paperBin:
            return value >= std::numeric_limits<std::int16_t>::min() &&
                   value <= std::numeric_limits<std::int16_t>::max();
        case PageOption::orientation:
        case PageOption::colorMode:
            return value == 1 || value == 2;
    }
    return false;
}

DeviceCapabilities plainSheet(const PageOptions& options, int margin) {
    const PaperSize paper = paperOf(options);
    DeviceCapabilities device;
    device.logPixelsX = resolution;
    device.logPixelsY = resolution;
    device.physicalWidth = pixels(paper.width);
    device.physicalHeight = pixels(paper.height);
    device.physicalOffsetX = margin;
    device.physicalOffsetY = margin;
    device.horzRes = device.physicalWidth - 2 * margin;
    device.vertRes = device.physicalHeight - 2 * margin;
    return device;
}

}  // namespace platform::drawing
