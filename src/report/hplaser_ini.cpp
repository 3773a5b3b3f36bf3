#include "report/hplaser_ini.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "printer/Printer.h"
#include "report/job_state.h"
#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace report {

namespace {

using runtime::Error;

constexpr const char* fileName = "hplaser.ini";
constexpr std::string_view notSet = "Vorgabe";
constexpr int usualScreenDpi = 96;
constexpr std::uint8_t mostKeys = 9;
constexpr std::size_t placementFields = 6;
constexpr std::size_t sizeFields = 3;

// The fields of a placement.
enum Field : std::size_t { fieldY, fieldX, fieldPicture, fieldUnit, fieldAbsolute, fieldScale };

bool isSet(std::string_view value) { return !value.empty() && value != notSet; }

const runtime::Locale& german() {
    static const runtime::Locale locale;
    return locale;
}

double decimal(std::string_view text) { return runtime::parseNumber(runtime::withDecimalComma(text), german()); }

float decimalSingle(std::string_view text) { return runtime::toSingle(decimal(text)); }

// Always the number of fields asked for; the last one keeps further commas. Says how many the value itself has.
std::size_t split(std::string_view value, std::vector<std::string>& fields) {
    std::size_t count = 0;
    for (std::string& field : fields) {
        const bool last = &field == &fields.back();
        const std::size_t comma = last ? std::string_view::npos : value.find(',');
        field = value.substr(0, comma);
        ++count;
        if (comma == std::string_view::npos) {
            break;
        }
        value.remove_prefix(comma + 1);
    }
    return count;
}

std::uint8_t macroNumber(std::string_view text, std::uint8_t offset) {
    const std::int32_t number = runtime::roundToLong(decimal(text));
    if (number < 0 || number > std::numeric_limits<std::uint8_t>::max() - offset) {
        throw Error(runtime::errOverflow, "ein Grafikmakro " + runtime::shown(text) + " gibt es nicht");
    }
    return static_cast<std::uint8_t>(number + offset);
}

bool truthValue(const std::string& text) {
    const std::string word = runtime::upperCase(runtime::trimBlanks(text));
    if (word == "TRUE" || word == "WAHR") {
        return true;
    }
    if (word == "FALSE" || word == "FALSCH") {
        return false;
    }
    return decimal(text) != 0;
}

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; }));
}

bool isFileName(std::string_view field) {
    constexpr std::size_t longestNumber = 4;
    return characters(field) > longestNumber && runtime::numberPrefix(field, '.') == 0;
}

double heightOf(std::string_view value) {
    try {
        return runtime::numberPrefix(runtime::withDecimalComma(value), ',');
    } catch (const Error& error) {
        throw error.at(barcodeHeightPlace);
    }
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

}  // namespace

HplaserIni::HplaserIni(session::Session& session, graphics::PictureCache& pictures)
    : session_(session),
      pictures_(pictures),
      profile_(session.platform.system.openProfile(runtime::AddBackslash(session.platform.system.currentDirectory()) +
                                                   fileName)) {
    if (const std::string failure = profile_->failure(); !failure.empty()) {
        const std::string text =
            "HPLASER.INI ist nicht lesbar: " + failure + ". Gedruckt wird ohne die Grafiken und Einstellungen darin.";
        session_.tellOnce(text);
        session_.platform.dialogs.notify(text);
    }
}

std::string HplaserIni::read(std::string_view section, std::string_view key) {
    return profile_->text(section, key, notSet);
}

double HplaserIni::GetBarcodeHeight() {
    const std::string value = read("Font", "BarcodeHeight");
    const double height = isSet(value) ? heightOf(value) : defaultBarcodeHeight;
    session_.log.line(">     GetBarcodeHeight: ", runtime::doubleText(height, session_.locale()),
                      ", gelesener Wert:  ", runtime::shown(withoutLeadingBlanks(value)));
    return height;
}

bool HplaserIni::AutoScaleDPI() {
    const std::string value = read("Modus", "AutoScaleDPI");
    blnAutoScaleDPI_ = isSet(value) && runtime::upperCase(value) == "TRUE";
    session_.log.line(">     AutoScaleDPI: ", runtime::booleanText(blnAutoScaleDPI_, session_.locale()),
                      ", gelesener Wert:  ", runtime::shown(withoutLeadingBlanks(value)));
    return blnAutoScaleDPI_;
}

float HplaserIni::ScaleDPIfactor(float factor) {
    const int dpi = session_.platform.system.screenDpiX();
    const float divisor = dpi == usualScreenDpi ? 0 : static_cast<float>(dpi) / usualScreenDpi;
    const float result = divisor != 0 ? runtime::toSingle(static_cast<double>(factor) / divisor) : factor;
    session_.log.line(">       ScaleDPIfactor (0=unverändert): ", runtime::singleText(divisor, session_.locale()));
    return result;
}

void HplaserIni::ReadGrafikPositionen(graphics::clsGrafiken& grafiken, std::string_view section, std::uint8_t offset,
                                      float sngScaleFactor) {
    const Section target{grafiken, section, offset, sngScaleFactor};
    session_.log.line(">     Grafikpositionen lesen");
    for (std::uint8_t key = 1; key <= mostKeys; ++key) {
        const std::string digit = std::to_string(key);
        readKey(section, "Grafik" + digit, [&](std::string_view value) { addGraphic(target, key, value); });
        readKey(section, "GrafikSize" + digit, [&](std::string_view value) { resizeGraphics(target, value); });
    }
    session_.log.line(">     Grafikpositionen gelesen");
}

template <typename Step>
void HplaserIni::readKey(std::string_view section, const std::string& key, Step step) {
    const std::string value = read(section, key);
    if (!isSet(value)) {
        return;
    }
    try {
        step(value);
    } catch (const Error& error) {
        throw error.at("(" + key + " in [" + std::string(section) + "] von " + fileName + ")");
    }
}

void HplaserIni::addGraphic(const Section& section, std::uint8_t key, std::string_view value) {
    session_.log.line(">       Grafikdaten: ", section.name, " ", runtime::shown(value));
    std::vector<std::string> fields(placementFields);
    if (split(value, fields) < placementFields) {
        fields[fieldUnit] = "INCH";
        fields[fieldAbsolute] = "False";
        fields[fieldScale] = runtime::singleText(section.sngScaleFactor, german());
    }
    fields[fieldScale] = normalisedScale(fields[fieldScale]);
    const bool file = isFileName(fields[fieldPicture]);
    graphics::GraphicDefinition daten;
    daten.sngYPos = runtime::toSingle(decimal(fields[fieldY]) * printer::twipsPerInch);
    daten.sngXPos = runtime::toSingle(decimal(fields[fieldX]) * printer::twipsPerInch);
    daten.bytMakro = macroNumber(file ? std::to_string(key) : fields[fieldPicture], section.offset);
    daten.sMasseinheit = fields[fieldUnit];
    daten.blnAbsolutPos = truthValue(fields[fieldAbsolute]);
    daten.sngScaleFaktor = decimalSingle(fields[fieldScale]);
    daten.sBildname = file ? session_.platform.system.fileNamed(fields[fieldPicture]) : "";
    section.grafiken.Add(session_, pictures_, daten);
}

std::string HplaserIni::normalisedScale(const std::string& field) {
    const double factor = decimal(field);
    return blnAutoScaleDPI_ ? runtime::singleText(ScaleDPIfactor(runtime::toSingle(factor)), german())
                            : runtime::doubleText(factor, german());
}

void HplaserIni::resizeGraphics(const Section& section, std::string_view value) {
    session_.log.line(">       Grafikdatengröße: ", section.name, " ", runtime::shown(value));
    std::vector<std::string> fields(sizeFields);
    split(value, fields);
    const std::uint8_t makro = macroNumber(fields[2], section.offset);
    for (graphics::clsGrafik& grafik : section.grafiken) {
        if (grafik.Makro() != makro) {
            continue;
        }
        session_.log.line(
            ">       bisherige Grafikgröße (HxW): ", runtime::singleText(grafik.Height(), session_.locale()), "  ",
            runtime::singleText(grafik.Width(), session_.locale()));
        grafik.Height(decimalSingle(fields[0]));
        grafik.Width(decimalSingle(fields[1]));
        session_.log.line(">       neue Grafikgröße gesetzt");
    }
}

}  // namespace report
