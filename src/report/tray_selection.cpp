#include "report/tray_selection.h"

#include "report/stored_option.h"
#include "settings/MRegistry.h"
#include "settings/printer_settings.h"

namespace report {

namespace {

// The printer's bins as a message lists them: "1 (Automatisch), 2 (Fach 1)".
std::string binList(platform::Spooler& spooler, const std::string& deviceName) {
    std::string result;
    for (const platform::PaperBin& bin : spooler.paperBins(deviceName)) {
        result += (result.empty() ? "" : ", ") + std::to_string(bin.number);
        if (!bin.name.empty()) {
            result += " (" + bin.name + ")";
        }
    }
    return result;
}

std::string expectedBin(platform::Spooler& spooler, const std::string& deviceName) {
    try {
        const std::string bins = binList(spooler, deviceName);
        return bins.empty() ? "-1, denn der Drucker „" + deviceName + "“ nennt keine Schächte"
                            : "-1 oder ein Schacht des Druckers „" + deviceName + "“: " + bins;
    } catch (const runtime::Error&) {
        return "-1 oder ein Schacht, den der Drucker „" + deviceName + "“ hat";
    }
}

}  // namespace

void selectTray(session::Session& session, printer::Printer& printer, const std::string& requestedTray) {
    const std::string& deviceName = printer.DeviceName();
    const std::string key = settings::MRegistry::printerKey(settings::keyNameOf(session, deviceName));
    const auto* const tray = settings::traySetting(requestedTray);
    const std::int32_t bin = tray != nullptr ? settings::binOfTray(session, key, *tray) : 0;
    if (bin < 1) {
        session.log.line(">     Trayregistrierungswert nicht erkannt, Standardtray wird verwendet");
        session.log.line(">     Schlüssel war: '", key, "'");
    } else {
        session.log.line(">     Tray wird vom Wert aus der Registrierung gesetzt, es soll ", std::to_string(bin),
                         " gesetzt werden");
        setStoredOption(printer, platform::PageOption::paperBin, bin, [&] {
            return settings::unusableValue(session, key, tray->name, std::to_string(bin),
                                           expectedBin(session.platform.spooler, deviceName));
        });
        if (const int kept = printer.Option(platform::PageOption::paperBin); kept != bin) {
            session.log.line(">     Druckertreiber wechselt den Schacht nicht innerhalb des Auftrags, es bleibt bei ",
                             std::to_string(kept));
        }
    }
    session.log.line(">     Benutze Tray: ", requestedTray,
                     "  Paperbin:", std::to_string(printer.Option(platform::PageOption::paperBin)));
}

}  // namespace report
