#include "settings/printer_settings.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <type_traits>

#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "settings/MRegistry.h"

namespace settings {

namespace {

using runtime::Locale;

std::string textOf(std::int32_t value, const Locale& /*locale*/) { return std::to_string(value); }
std::string textOf(float value, const Locale& locale) { return runtime::singleText(value, locale); }

// What the value of a setting may be.
template <typename Number>
std::string rangeOf(const Setting<Number>& setting, const Locale& locale) {
    if constexpr (std::is_integral_v<Number>) {
        return "eine ganze Zahl von " + std::to_string(std::numeric_limits<Number>::min()) + " bis " +
               std::to_string(std::numeric_limits<Number>::max());
    } else {
        return "eine Zahl, geschrieben wie " + textOf(setting.byDefault, locale);
    }
}

// Reads the values of one printer's key. Text that is no number of the setting's type is the default, and whoever
// started the program from a shell is told.
class PrinterKeyReader {
public:
    PrinterKeyReader(session::Session& session, std::string key) : session_(session), key_(std::move(key)) {}

    std::int32_t value(const Setting<std::int32_t>& setting) const { return number(setting, runtime::roundToLong); }
    std::int16_t value(const Setting<std::int16_t>& setting) const { return number(setting, runtime::roundToInteger); }
    float value(const Setting<float>& setting) const { return number(setting, runtime::toSingle); }

private:
    template <typename Number>
    Number number(const Setting<Number>& setting, Number (*convert)(double)) const {
        const std::string text =
            MRegistry::GetRegistryValue(session_.platform.settings, key_, setting.name, MRegistry::noDefault);
        if (text == MRegistry::noDefault) {
            return setting.byDefault;
        }
        const Locale& locale = session_.locale();
        try {
            return convert(runtime::parseNumber(text, locale));
        } catch (const runtime::Error&) {
            session_.platform.dialogs.diagnostic(
                unusableValue(session_, key_, setting.name, text, rangeOf(setting, locale)) + " Es gilt " +
                textOf(setting.byDefault, locale) + ".");
            return setting.byDefault;
        }
    }

    session::Session& session_;
    std::string key_;
};

PrinterSettings pageSettings(const PrinterKeyReader& reader) {
    PrinterSettings result;
    result.lngZeilenabstand = reader.value(lineSpacing);
    result.lngKopfabstand = reader.value(topMargin);
    result.lngLinkerRand = reader.value(leftMargin);
    result.sngScaleFaktor = reader.value(scaleFactor);
    return result;
}

void carryOver(session::Session& session, const std::string& deviceName) {
    platform::SettingsStore& store = session.platform.settings;
    const Locale& locale = session.locale();
    session.log.line(">       alte Werte lesen");
    const PrinterKeyReader oldKey(session, MRegistry::printerKey(deviceName, MRegistry::oldProductKey));
    const PrinterSettings values = pageSettings(oldKey);

    session.log.line(">       neue schreiben");
    const std::string key = MRegistry::printerKey(deviceName);
    const auto write = [&](std::string_view name, const std::string& text, std::string_view byDefault) {
        MRegistry::SetRegistryValue(store, key, name, text, byDefault);
    };
    write(leftMargin.name, std::to_string(values.lngLinkerRand), MRegistry::noDefault);
    write(topMargin.name, std::to_string(values.lngKopfabstand), MRegistry::noDefault);
    write(lineSpacing.name, std::to_string(values.lngZeilenabstand), MRegistry::noDefault);
    write(scaleFactor.name, runtime::singleText(values.sngScaleFaktor, locale), MRegistry::noDefault);
    // The last tray was entered by hand and stays where it was entered.
    std::for_each(trays.begin(), std::prev(trays.end()), [&](const Setting<std::int16_t>& tray) {
        write(tray.name, std::to_string(oldKey.value(tray)), std::to_string(tray.byDefault));
    });
}

}  // namespace

std::string_view keyNameOf(session::Session& session, std::string_view deviceName) {
    const std::string_view name = MRegistry::printerKeyName(deviceName);
    if (name != deviceName) {
        session.log.line(R"(>     UNC-Druckername erkannt, führende \\ gekürzt: )", name);
    }
    return name;
}

PrinterSettings loadPrinterSettings(session::Session& session, const std::string& deviceName,
                                    std::int32_t printerColorMode) {
    platform::SettingsStore& store = session.platform.settings;
    const std::string_view name = keyNameOf(session, deviceName);
    session.log.line(">     letzten Treiber speichern");
    MRegistry::SetRegistryValue(store, MRegistry::productKey, "LastDriverUsed", deviceName, MRegistry::noDefault);

    session.log.line(">     Versionupgradecheck");
    if (!MRegistry::RegistryKeyExists(store, MRegistry::printerKey(deviceName)) &&
        MRegistry::RegistryKeyExists(store, MRegistry::printerKey(deviceName, MRegistry::oldProductKey))) {
        carryOver(session, deviceName);
    }

    session.log.line(">     bestehende Werte lesen ", name);
    const PrinterKeyReader reader(session, MRegistry::printerKey(deviceName));
    PrinterSettings result = pageSettings(reader);
    result.lngColorMode = reader.value(Setting<std::int32_t>{colorModeName, printerColorMode});
    return result;
}

std::string unusableValue(session::Session& session, std::string_view key, std::string_view name,
                          std::string_view value, std::string_view expected) {
    std::string result = "Die Einstellung „";
    result.append(name).append("“ unter ").append(key).append(" (" + session.platform.settings.place() + ") ist „");
    return result.append(value).append("“; erwartet: ").append(expected).append(".");
}

const Setting<std::int16_t>* traySetting(std::string_view tray) {
    const auto* const found = std::find_if(trays.begin(), trays.end(), [tray](const Setting<std::int16_t>& setting) {
        return tray.size() == 1 && setting.name.ends_with(tray);
    });
    return found != trays.end() ? found : nullptr;
}

std::int32_t binOfTray(session::Session& session, std::string_view printerKey, const Setting<std::int16_t>& tray) {
    const std::string text =
        MRegistry::GetRegistryValue(session.platform.settings, printerKey, tray.name, std::to_string(tray.byDefault));
    try {
        return runtime::roundToLong(runtime::parseNumber(text, session.locale()));
    } catch (const runtime::Error& error) {
        throw runtime::Error(error.number(), unusableValue(session, printerKey, tray.name, text,
                                                           "die Nummer eines Schachts oder " +
                                                               std::to_string(tray.byDefault) + " für keinen"));
    }
}

bool ignoresPaperSize(platform::SettingsStore& store, std::string_view deviceName) {
    constexpr std::string_view notIgnored = "0";
    return MRegistry::GetRegistryValue(store, MRegistry::printerKey(deviceName), ignorePaperSizeName, notIgnored) !=
           notIgnored;
}

}  // namespace settings
