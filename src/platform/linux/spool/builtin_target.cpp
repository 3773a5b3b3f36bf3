#include "platform/linux/spool/builtin_target.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "platform/linux/documents/document_name.h"
#include "platform/linux/documents/paper_sizes.h"

namespace platform_linux::spool {

namespace {

using documents::PageOptions;
using documents::paperOwn;
using documents::PaperSize;
using documents::PdfOutput;
using pdf::PdfPage;

constexpr int resolution = 600;
constexpr int margin = 100;

// Whole pairs of pixels, as raster drivers have it: A4 is 4960 x 7016.
int pixels(int hundredthsOfMillimetre) {
    return 2 * static_cast<int>(std::lround(hundredthsOfMillimetre * resolution / 2540.0 / 2.0));
}

}  // namespace

BuiltinTarget::BuiltinTarget(const std::string& title, Concealment concealment)
    : folder_(std::make_shared<const Folder>(Folder::current())),
      name_(documents::documentName(title)),
      concealment_(concealment) {}

bool BuiltinTarget::accepts(platform::PageOption option, int value) {
    switch (option) {
        case platform::PageOption::paperSize:
            return value == paperOwn || documents::paperSize(value).has_value();
        case platform::PageOption::paperBin:
            return value >= std::numeric_limits<std::int16_t>::min() &&
                   value <= std::numeric_limits<std::int16_t>::max();
        case platform::PageOption::orientation:
        case platform::PageOption::colorMode:
            return value == 1 || value == 2;
    }
    return false;
}

PdfPage BuiltinTarget::page(const PageOptions& options) const {
    PaperSize size = documents::paperSize(options.paperSize).value_or(PaperSize());
    if (options.orientation == 2) {
        std::swap(size.width, size.height);
    }
    PdfPage page;
    page.widthPoints = documents::toPoints(size.width);
    page.heightPoints = documents::toPoints(size.height);
    page.color = options.colorMode == 2;
    page.device.logPixelsX = resolution;
    page.device.logPixelsY = resolution;
    page.device.physicalWidth = pixels(size.width);
    page.device.physicalHeight = pixels(size.height);
    page.device.physicalOffsetX = margin;
    page.device.physicalOffsetY = margin;
    page.device.horzRes = page.device.physicalWidth - 2 * margin;
    page.device.vertRes = page.device.physicalHeight - 2 * margin;
    return page;
}

bool BuiltinTarget::separates(const PageOptions& /*previous*/, const PageOptions& /*next*/) const { return false; }

std::unique_ptr<PdfOutput> BuiltinTarget::open() { return std::make_unique<PdfFile>(folder_, name_, concealment_); }

}  // namespace platform_linux::spool
