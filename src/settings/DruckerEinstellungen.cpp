#include "settings/DruckerEinstellungen.h"

#include <array>
#include <string_view>

#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "settings/MRegistry.h"

namespace MRegistry {

namespace {

using runtime::Locale;

// Reads the values of one printer's key. Settings fall back silently: text that is no number is the default.
class PrinterKeyReader {
public:
    PrinterKeyReader(platform::SettingsStore& store, std::string key, const Locale& locale)
        : store_(store), key_(std::move(key)), locale_(locale) {}

    std::int32_t longValue(std::string_view name, std::int32_t byDefault) const {
        return number(name, byDefault, runtime::roundToLong);
    }
    std::int16_t integerValue(std::string_view name, std::int16_t byDefault) const {
        return number(name, byDefault, runtime::roundToInteger);
    }
    float singleValue(std::string_view name, float byDefault) const {
        return number(name, byDefault, runtime::toSingle);
    }

private:
    template <typename Number>
    Number number(std::string_view name, Number byDefault, Number (*convert)(double)) const {
        const std::string text = GetRegistryValue(store_, key_, name, noDefault);
        if (text == noDefault) {
            return byDefault;
        }
        try {
            return convert(runtime::parseNumber(text, locale_));
        } catch (const runtime::Error&) {
            return byDefault;
        }
    }

    platform::SettingsStore& store_;
    std::string key_;
    const Locale& locale_;
};

DruckerEinstellungen pageSettings(const PrinterKeyReader& reader) {
    const DruckerEinstellungen defaults;
    DruckerEinstellungen result;
    result.lngZeilenabstand = reader.longValue("Zeilenabstand", defaults.lngZeilenabstand);
    result.lngKopfabstand = reader.longValue("ObererRand", defaults.lngKopfabstand);
    result.lngLinkerRand = reader.longValue("LinkerRand", defaults.lngLinkerRand);
    result.sngScaleFaktor = reader.singleValue("ScaleFaktor", defaults.sngScaleFaktor);
    return result;
}

// "Schacht4" has no place here: it is entered by hand and stays where it was entered.
constexpr std::array<std::string_view, 3> carriedTrays = {"Schacht1", "Schacht2", "Schacht3"};

void carryOver(session::Session& session, const std::string& deviceName) {
    platform::SettingsStore& store = session.platform.settings;
    const Locale& locale = session.locale();
    session.log.line(">       alte Werte lesen");
    const PrinterKeyReader oldKey(store, printerKey(deviceName, oldProductKey), locale);
    const DruckerEinstellungen values = pageSettings(oldKey);

    session.log.line(">       neue schreiben");
    const std::string key = printerKey(deviceName);
    SetRegistryValue(store, key, "LinkerRand", std::to_string(values.lngLinkerRand), noDefault);
    SetRegistryValue(store, key, "ObererRand", std::to_string(values.lngKopfabstand), noDefault);
    SetRegistryValue(store, key, "Zeilenabstand", std::to_string(values.lngZeilenabstand), noDefault);
    SetRegistryValue(store, key, "ScaleFaktor", runtime::singleText(values.sngScaleFaktor, locale), noDefault);
    for (const std::string_view tray : carriedTrays) {
        SetRegistryValue(store, key, tray, std::to_string(oldKey.integerValue(tray, -1)), "-1");
    }
}

}  // namespace

std::string_view keyNameOf(session::Session& session, std::string_view deviceName) {
    const std::string_view name = printerKeyName(deviceName);
    if (name != deviceName) {
        session.log.line(R"(>     UNC-Druckername erkannt, führende \\ gekürzt: )", name);
    }
    return name;
}

DruckerEinstellungen DruckerEinstellungenLaden(session::Session& session, const std::string& deviceName,
                                               std::int32_t printerColorMode) {
    platform::SettingsStore& store = session.platform.settings;
    const std::string_view name = keyNameOf(session, deviceName);
    session.log.line(">     letzten Treiber speichern");
    SetRegistryValue(store, productKey, "LastDriverUsed", deviceName, noDefault);

    session.log.line(">     Versionupgradecheck");
    if (!RegistryKeyExists(store, printerKey(deviceName)) &&
        RegistryKeyExists(store, printerKey(deviceName, oldProductKey))) {
        carryOver(session, deviceName);
    }

    session.log.line(">     bestehende Werte lesen ", name);
    const PrinterKeyReader reader(store, printerKey(deviceName), session.locale());
    DruckerEinstellungen result = pageSettings(reader);
    result.lngColorMode = reader.longValue("ColorMode", printerColorMode);
    return result;
}

}  // namespace MRegistry
