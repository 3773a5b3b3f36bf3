#include "graphics/MGrafikdruck.h"

#include <algorithm>
#include <memory>

#include "graphics/picture_cache.h"
#include "printer/Printer.h"
#include "printer/printer_choice.h"
#include "printer/remarks.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace graphics::MGrafikdruck {

namespace {

// In double precision, so that no product of two sides overflows.
int scaled(int side, int factor, int divisor) {
    return std::max(1, runtime::roundToLong(static_cast<double>(side) * factor / divisor));
}

PixelSize pageSize(printer::Printer& printer) {
    const auto pixels = [](float twips, float twipsPerPixel) {
        return runtime::roundToLong(runtime::divide(twips, twipsPerPixel));
    };
    return {pixels(printer.ScaleWidth(), printer.TwipsPerPixelX()),
            pixels(printer.ScaleHeight(), printer.TwipsPerPixelY())};
}

}  // namespace

PixelSize fit(const PixelSize& picture, const PixelSize& page) {
    if (static_cast<double>(page.width) * picture.height / picture.width < page.height) {
        return {page.width, scaled(page.width, picture.height, picture.width)};
    }
    return {scaled(page.height, picture.width, picture.height), page.height};
}

void PrintGraphic(session::Session& session, const std::string& sDateiname, const std::string& sDruckerTreiber) {
    session.log.line(">   PrintGraphic (", sDateiname, ", ", runtime::shown(sDruckerTreiber), ")");
    platform::Spooler& spooler = session.platform.spooler;
    if (!spooler.hasPrinters()) {
        printer::showNoPrinter(session);
        return;
    }
    const auto printer = printer::choosePrinter(session, printer::installedPrinter(spooler, sDruckerTreiber),
                                                std::string(runtime::fileNameOf(sDateiname)));
    const PixelSize page = pageSize(*printer);
    PictureCache pictures(session.platform.system, session.platform.imageFiles);
    const auto picture = pictures.load(sDateiname)->picture();
    const PixelSize size = fit({picture->width, picture->height}, page);
    printer->Print(" ");
    printer->Canvas().drawPicture(picture, 0, 0, size.width, size.height);
    printer->EndDoc();
    printer::logRemarks(session, *printer);
}

}  // namespace graphics::MGrafikdruck
