#include "graphics/clsGrafik.h"

#include <cmath>

#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace graphics {

namespace {

using runtime::divide;
using runtime::Error;

constexpr const char* macroFilePrefix = "KRVWin.M";
constexpr const char* inversionMarkerPrefix = "KRVWinIn.M";
constexpr const char* centimetres = "CM";
constexpr double centimetresPerInch = 2.54;
constexpr double himetricPerInch = 2540;

bool isMissingFile(const Error& error) {
    return error.number() == runtime::errFileNotFound || error.number() == runtime::errPathNotFound;
}

std::string resolutionText(double dotsPerInch, const runtime::Locale& locale) {
    return runtime::doubleText(std::round(dotsPerInch), locale);
}

float naturalSize(int pixels, int screenDpi) { return runtime::toSingle(divide(pixels * himetricPerInch, screenDpi)); }

template <typename Step>
void orPrintingError(Step step) {
    try {
        step();
    } catch (const Error& error) {
        const std::string routine = "clsGrafik_PrintGrafik";
        throw Error(clsGrafik::errPrinting, routine,
                    "Fehler in " + routine + " " + std::to_string(error.number()) + " " + error.description(),
                    error.detail());
    }
}

}  // namespace

std::string clsGrafik::Masseinheit() const { return runtime::upperCase(masseinheit_); }

std::shared_ptr<const platform::Picture> clsGrafik::Bild() const { return bild_ ? bild_->picture() : nullptr; }

std::string clsGrafik::macroFolder() const {
    return runtime::AddBackslash(session_->platform.system.currentDirectory()) + "LASER\\";
}

void clsGrafik::Makro(std::uint8_t number) {
    const std::string digits = std::to_string(number);
    session_->log.line(">       Makro: ", digits, " Beginn");
    makro_ = number;
    bild_.reset();
    const std::string macroFile = macroFilePrefix + digits;
    if (bildname_.empty()) {
        bildname_ = macroFolder() + macroFile;
    }
    session_->log.line(">         Makro: ", macroFile);
    try {
        load();
    } catch (const Error& error) {
        ignoreOrRaise(error);
        return;
    }
    session_->log.line(">       Makro: ", digits, " Ende");
}

void clsGrafik::load() {
    session::DebugLog& log = session_->log;
    platform::System& system = session_->platform.system;
    log.line(">         Dateiname: ", runtime::shown(bildname_));
    const bool inverted = wantsInversion();
    const auto picture = pictures_->load(bildname_, inverted ? Colors::inverted : Colors::asInFile);
    const platform::PictureInfo& info = picture->info();
    const runtime::Locale& locale = session_->locale();
    log.line(">         Auflösung (X, Y, Depth): ", resolutionText(info.dpiX, locale), ", ",
             resolutionText(info.dpiY, locale), ", ", std::to_string(info.bitsPerPixel));
    if (inverted) {
        log.line(">         Bild invertieren");
    }
    log.line(">         Bild laden");
    bild_ = picture;
    width_ = naturalSize(info.width, system.screenDpiX());
    height_ = naturalSize(info.height, system.screenDpiY());
}

bool clsGrafik::wantsInversion() const {
    return bildname_.find(macroFilePrefix) != std::string::npos &&
           session_->platform.system.fileExists(macroFolder() + inversionMarkerPrefix + std::to_string(makro_));
}

void clsGrafik::ignoreOrRaise(const Error& error) const {
    const std::string source = "KRVWINPR.CLSGRAFIK";
    const std::int32_t number = isMissingFile(error) ? errFileMissing : error.number();
    session_->log.line(">         Makrohinweis, ignoriert: ", std::to_string(number), " ", error.description());
    if (number != errFileMissing) {
        throw Error(errUnreadable, source, error.description() + "\r\n(" + std::to_string(number) + ")",
                    error.detail());
    }
    if (session_->log.debugging()) {
        throw Error(errMissing, source, "Bilddatei " + runtime::shown(bildname_) + " nicht gefunden.");
    }
    session_->tellOnce("Bilddatei " + runtime::shown(bildname_) + " nicht gefunden; gedruckt wird ohne diese Grafik.");
}

void clsGrafik::PrintGrafik(const GraphicTarget& ziel, std::string& message, float x, float y) const {
    orPrintingError([&] {
        const Area area = areaAt(ziel, x == ownPosition ? xPos_ : x, y == ownPosition ? yPos_ : y);
        if (bild_) {
            paint(ziel, area, message);
        } else {
            message += " keine gültige Bilddatei!";
        }
    });
}

void clsGrafik::PrintGrafik2(const GraphicTarget& ziel, std::string& message) const {
    orPrintingError([&] {
        const Area area = areaAt(ziel, xPos_, yPos_);
        if (!bild_) {
            throw Error(runtime::errObjectNotSet);
        }
        paint(ziel, area, message);
    });
}

clsGrafik::Area clsGrafik::areaAt(const GraphicTarget& ziel, float x, float y) const {
    const printer::clsDrucker& margins = ziel.objPrinterUtil;
    const bool metric = Masseinheit() == centimetres;
    const auto position = [&](float value, std::int32_t offset, auto marginCM, auto marginInch) {
        const double twips = metric ? value / centimetresPerInch : value;
        if (!absolutPos_) {
            return runtime::toSingle(twips + offset);
        }
        return runtime::toSingle(twips - (metric ? (margins.*marginCM)() : (margins.*marginInch)()));
    };
    const auto size = [&](float natural) {
        try {
            return runtime::toSingle(metric ? divide(natural / centimetresPerInch, scaleFaktor_ / centimetresPerInch)
                                            : divide(natural, scaleFaktor_));
        } catch (const Error& error) {
            throw Error(error.number(), "Grafik " + bildname_ + ": Der Skalierungsfaktor ist " +
                                            runtime::singleText(scaleFaktor_, session_->locale()) +
                                            "; erwartet: eine Zahl über 0. Er steht in HPLASER.INI bei der Grafik, "
                                            "sonst in der Einstellung „ScaleFaktor“ des Druckers.");
        }
    };
    return {position(x, ziel.lngXOffset, &printer::clsDrucker::LeftMarginCM, &printer::clsDrucker::LeftMarginInch),
            position(y, ziel.lngYOffset, &printer::clsDrucker::TopMarginCM, &printer::clsDrucker::TopMarginInch),
            size(width_), size(height_)};
}

void clsGrafik::paint(const GraphicTarget& ziel, const Area& area, std::string& message) const {
    ziel.printer.PaintPicture(Bild(), area.left, area.top, area.width, area.height);
    const auto text = [this](float value) { return runtime::singleText(value, session_->locale()); };
    message += std::string(" ") + (Masseinheit() == centimetres ? "cm" : "Inch") +
               (absolutPos_ ? " absolut" : " relativ") + ", (x;y; width;height Twips): " + text(area.left) + ";" +
               text(area.top) + "; " + text(area.width) + ";" + text(area.height) +
               "     Scalefaktor:" + text(scaleFaktor_);
}

}  // namespace graphics
