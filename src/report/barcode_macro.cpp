#include "report/barcode_macro.h"

#include <cmath>

#include "barcode/clsLinearBarCodes.h"
#include "report/hplaser_ini.h"
#include "runtime/error.h"
#include "runtime/numbers.h"

namespace report {

namespace {

constexpr double xFactor = 3.0;
constexpr double ratio = 3.0;
constexpr int multiplier = 2;

// Cuts the text before the next comma, and the comma, off the fields.
std::string_view cutField(std::string_view& fields) {
    const std::size_t comma = fields.find(',');
    const std::string_view field = fields.substr(0, comma);
    fields.remove_prefix(comma == std::string_view::npos ? fields.size() : comma + 1);
    return field;
}

float inches(std::string_view text) {
    return runtime::toSingle(runtime::numberPrefix(runtime::withDecimalComma(text), ','));
}

// ", " and how far it is in millimetres, rounded up to tenths; nothing where it is not beyond the edge.
std::string overhang(std::string_view edge, std::int64_t pixels, int pixelsPerInch, const runtime::Locale& locale) {
    if (pixels <= 0) {
        return {};
    }
    const double tenths = std::ceil(static_cast<double>(pixels) * 254 / pixelsPerInch);
    return ", " + std::string(edge) + " " + runtime::singleText(static_cast<float>(tenths / 10), locale) + " mm";
}

std::int32_t heightInPixels(session::Session& session, double inches, int pixelsPerInch) {
    std::int32_t height = 0;
    try {
        height = runtime::roundToLong(pixelsPerInch * inches);
    } catch (const runtime::Error& error) {
        throw error.at(barcodeHeightPlace);
    }
    if (height <= 0) {
        session.tellOnce("Barcodes werden nicht gedruckt: Sie sind " + runtime::doubleText(inches, session.locale()) +
                         " Zoll hoch. Bitte den Wert ändern " + barcodeHeightPlace + ".");
    }
    return height;
}

std::string overhangs(barcode::clsLinearBarCodes& barcode, const platform::DeviceCapabilities& caps,
                      const runtime::Locale& locale) {
    const std::int64_t right = barcode.BarCodeX() + barcode.TotalBarWidth();
    const std::int64_t bottom = barcode.BarCodeY() + barcode.TotalBarHeight();
    return overhang("links", -static_cast<std::int64_t>(barcode.BarCodeX()), caps.logPixelsX, locale) +
           overhang("oben", -static_cast<std::int64_t>(barcode.BarCodeY()), caps.logPixelsY, locale) +
           overhang("rechts", right - caps.horzRes, caps.logPixelsX, locale) +
           overhang("unten", bottom - caps.vertRes, caps.logPixelsY, locale);
}

}  // namespace

BarcodeMacro readBarcodeMacro(std::string_view fields) {
    BarcodeMacro macro;
    macro.y = inches(cutField(fields));
    macro.x = inches(cutField(fields));
    macro.data = fields;
    std::erase(macro.data, ',');
    return macro;
}

void printBarcode(session::Session& session, printer::Printer& printer, const BarcodeMacro& macro, double height) {
    const runtime::Locale& locale = session.locale();
    session.log.line(">       Barcodeausgabe: (Y,X) ", runtime::singleText(macro.y, locale), ",",
                     runtime::singleText(macro.x, locale), " Text: '",
                     session.platform.system.fromDosCodePage(macro.data), "'");
    platform::Surface& page = printer.Canvas();
    const platform::DeviceCapabilities caps = page.capabilities();
    barcode::clsLinearBarCodes barcode;
    barcode.Symbology(barcode::code39);
    barcode.BarcodeOutput(&page);
    barcode.BarCodeX(runtime::roundToLong(static_cast<double>(macro.x) * caps.logPixelsX));
    barcode.BarCodeY(runtime::roundToLong(static_cast<double>(macro.y) * caps.logPixelsY));
    barcode.BarXFactor(xFactor);
    barcode.BarRatio(ratio);
    barcode.BarMultiplier(multiplier);
    session.log.line(">       Barcodeparameter: XFactor ", runtime::doubleText(barcode.BarXFactor(), locale),
                     ", Ratio ", runtime::doubleText(barcode.BarRatio(), locale), ", Multiplier ",
                     std::to_string(barcode.BarMultiplier()));
    barcode.BarcodeHeight(heightInPixels(session, height, caps.logPixelsY));
    barcode.BarCodeData(macro.data);
    barcode.DrawBarCode();
    if (session.log.writes()) {
        const std::string beyond = overhangs(barcode, caps, locale);
        if (!beyond.empty()) {
            session.log.line(">       Barcode ragt über den bedruckbaren Bereich hinaus: ", beyond.substr(2));
        }
    }
}

}  // namespace report
