#include "settings/printer_settings.h"

#include <algorithm>
#include <iterator>

#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "settings/MRegistry.h"

namespace settings {

namespace {

using runtime::Locale;

// Reads the values of one printer's key. Settings fall back silently: text that is no number is the default.
class PrinterKeyReader {
public:
    PrinterKeyReader(platform::SettingsStore& store, std::string key, const Locale& locale)
        : store_(store), key_(std::move(key)), locale_(locale) {}

    std::int32_t value(const Setting<std::int32_t>& setting) const { return number(setting, runtime::roundToLong); }
    std::int16_t value(const Setting<std::int16_t>& setting) const { return number(setting, runtime::roundToInteger); }
    float value(const Setting<float>& setting) const { return number(setting, runtime::toSingle); }

private:
    template <typename Number>
    Number number(const Setting<Number>& setting, Number (*convert)(double)) const {
        const std::string text = MRegistry::GetRegistryValue(store_, key_, setting.name, MRegistry::noDefault);
        if (text == MRegistry::noDefault) {
            return setting.byDefault;
        }
        try {
            return convert(runtime::parseNumber(text, locale_));
        } catch (const runtime::Error&) {
            return setting.byDefault;
        }
    }

    platform::SettingsStore& store_;
    std::string key_;
    const Locale& locale_;
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
    const PrinterKeyReader oldKey(store, MRegistry::printerKey(deviceName, MRegistry::oldProductKey), locale);
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
    const PrinterKeyReader reader(store, MRegistry::printerKey(deviceName), session.locale());
    PrinterSettings result = pageSettings(reader);
    result.lngColorMode = reader.value(Setting<std::int32_t>{colorModeName, printerColorMode});
    return result;
}

std::int32_t binOfTray(session::Session& session, std::string_view printerKey, std::string_view tray) {
    const auto* const found = std::find_if(trays.begin(), trays.end(), [tray](const Setting<std::int16_t>& setting) {
        return tray.size() == 1 && setting.name.ends_with(tray);
    });
    if (found == trays.end()) {
        return 0;
    }
    const std::string text = MRegistry::GetRegistryValue(session.platform.settings, printerKey, found->name,
                                                         std::to_string(found->byDefault));
    return runtime::roundToLong(runtime::parseNumber(text, session.locale()));
}

bool ignoresPaperSize(platform::SettingsStore& store, std::string_view deviceName) {
    constexpr std::string_view notIgnored = "0";
    return MRegistry::GetRegistryValue(store, MRegistry::printerKey(deviceName), "IgnorePaperSize", notIgnored) !=
           notIgnored;
}

}  // namespace settings
