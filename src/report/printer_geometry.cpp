#include "report/printer_geometry.h"

#include <string>

#include "printer/clsDrucker.h"
#include "runtime/numbers.h"

namespace report {

void logPrinterGeometry(session::Session& session, printer::Printer& printer) {
    session::DebugLog& log = session.log;
    const auto single = [&](float value) { return runtime::singleText(value, session.locale()); };
    printer::clsDrucker geometry(session.platform.dialogs);
    geometry.NewPrinter(printer.Device());
    log.line(">   Ränder (links;oben; rechts;unten) cm: ", single(geometry.LeftMarginCM()), ";",
             single(geometry.TopMarginCM()), ";", single(geometry.RightMarginCM()), ";",
             single(geometry.BottomMarginCM()));
    const float twipsX = printer.TwipsPerPixelX();
    const float twipsY = printer.TwipsPerPixelY();
    const float pixelsX = runtime::toSingle(printer::twipsPerInch / twipsX);
    const float pixelsY = runtime::toSingle(printer::twipsPerInch / twipsY);
    const std::int32_t width = runtime::roundToLong(printer.ScaleWidth());
    const std::int32_t height = runtime::roundToLong(printer.ScaleHeight());
    log.line(">   TwipsPerPixel (X,Y): ", single(twipsX), ", ", single(twipsY));
    log.line(">   Pixel pro mm (X,Y): ", single(pixelsX), ", ", single(pixelsY));
    log.line(">   Bedruckbarer Bereich (Breite x Höhe): ", std::to_string(width), " x ", std::to_string(height));
    log.line(">   Bedruckbarer Bereich (Breite x Höhe) in cm: ", single(static_cast<float>(width) / pixelsX), ", ",
             single(static_cast<float>(height) / pixelsY));
    log.line(">   Physische Größe in cm (X,Y): ", single(geometry.PhysicalWidthCM()), ", ",
             single(geometry.PhysicalHeightCM()));
}

}  // namespace report
