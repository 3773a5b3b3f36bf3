#include "platform/linux/spool/builtin_printer.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "platform/linux/spool/document_name.h"
#include "platform/linux/spool/paper_sizes.h"

namespace platform_linux::spool {

namespace {

constexpr int resolution = 600;
constexpr int margin = 100;
constexpr std::uint32_t usualPriority = 50;

// Whole pairs of pixels, as raster drivers have it: A4 is 4960 x 7016.
int pixels(int hundredthsOfMillimetre) {
    return 2 * static_cast<int>(std::lround(hundredthsOfMillimetre * resolution / 2540.0 / 2.0));
}

}  // namespace

platform::PrinterRecord builtinPrinterRecord(bool isDefault) {
    platform::PrinterRecord record;
    record.name = builtinPrinterName;
    record.driverName = builtinPrinterName;
    record.portName = "FILE:";
    record.comment = "Schreibt PDF-Dateien in den aktuellen Ordner";
    record.attributes = platform::printer_attribute::local | (isDefault ? platform::printer_attribute::isDefault : 0);
    record.priority = usualPriority;
    record.defaultPriority = usualPriority;
    return record;
}

BuiltinPrinter::BuiltinPrinter(const std::string& title, Concealment concealment)
    : folder_(std::make_shared<const Folder>(Folder::current())),
      name_(documentName(title)),
      concealment_(concealment) {}

bool BuiltinPrinter::accepts(platform::PageOption option, int value) {
    switch (option) {
        case platform::PageOption::paperSize:
            return value == paperOwn || paperSize(value).has_value();
        case platform::PageOption::paperBin:
            return value >= std::numeric_limits<std::int16_t>::min() &&
                   value <= std::numeric_limits<std::int16_t>::max();
        case platform::PageOption::orientation:
        case platform::PageOption::colorMode:
            return value == 1 || value == 2;
    }
    return false;
}

PdfPage BuiltinPrinter::page(const PageOptions& options) const {
    PaperSize size = paperSize(options.paperSize).value_or(PaperSize());
    if (options.orientation == 2) {
        std::swap(size.width, size.height);
    }
    PdfPage page;
    page.widthPoints = toPoints(size.width);
    page.heightPoints = toPoints(size.height);
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

bool BuiltinPrinter::separates(const PageOptions& /*previous*/, const PageOptions& /*next*/) const { return false; }

std::unique_ptr<PdfOutput> BuiltinPrinter::open() { return std::make_unique<PdfFile>(folder_, name_, concealment_); }

}  // namespace platform_linux::spool
