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

// The bin that the user assigned to a tray, and where that is stored.
struct AssignedBin {
    AssignedBin(session::Session& session, const std::string& deviceName, const std::string& requestedTray)
        : key(settings::MRegistry::printerKey(deviceName)), tray(settings::traySetting(requestedTray)) {
        if (tray != nullptr) {
            bin = settings::binOfTray(session, key, *tray);
        }
    }

    const std::string key;
    const settings::Setting<std::int16_t>* const tray;
    std::int32_t bin = 0;  // below 1 for none
};

void setBin(session::Session& session, printer::Printer& printer, const AssignedBin& assigned) {
    setStoredOption(printer, platform::PageOption::paperBin, assigned.bin, [&] {
        return settings::unusableValue(session, assigned.key, assigned.tray->name, std::to_string(assigned.bin),
                                       expectedBin(session.platform.spooler, printer.DeviceName()));
    });
}

}  // namespace

void selectTray(session::Session& session, printer::Printer& printer, const std::string& requestedTray) {
    settings::keyNameOf(session, printer.DeviceName());
    const AssignedBin assigned(session, printer.DeviceName(), requestedTray);
    if (assigned.bin < 1) {
        session.log.line(">     Trayregistrierungswert nicht erkannt, Standardtray wird verwendet");
        session.log.line(">     Schlüssel war: '", assigned.key, "'");
    } else {
        session.log.line(">     Tray wird vom Wert aus der Registrierung gesetzt, es soll ",
                         std::to_string(assigned.bin), " gesetzt werden");
        setBin(session, printer, assigned);
        if (const int kept = printer.Option(platform::PageOption::paperBin); kept != assigned.bin) {
            session.log.line(">     Druckertreiber wechselt den Schacht nicht innerhalb des Auftrags, es bleibt bei ",
                             std::to_string(kept));
        }
    }
    session.log.line(">     Benutze Tray: ", requestedTray,
                     "  Paperbin:", std::to_string(printer.Option(platform::PageOption::paperBin)));
}

std::optional<int> selectTraySilently(session::Session& session, printer::Printer& printer,
                                      const std::string& requestedTray) {
    const AssignedBin assigned(session, printer.DeviceName(), requestedTray);
    if (assigned.bin < 1) {
        return std::nullopt;
    }
    setBin(session, printer, assigned);
    return printer.Option(platform::PageOption::paperBin);
}

}  // namespace report
