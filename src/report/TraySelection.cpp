#include "report/TraySelection.h"

#include "runtime/numbers.h"
#include "settings/DruckerEinstellungen.h"
#include "settings/MRegistry.h"

namespace MPrint {

void SelectTray(session::Session& session, printer::Printer& printer, const std::string& requestedTray) {
    const std::string& deviceName = printer.DeviceName();
    const std::string key = MRegistry::printerKey(MRegistry::keyNameOf(session, deviceName));
    std::int32_t bin = 0;
    if (requestedTray == "1" || requestedTray == "2" || requestedTray == "3" || requestedTray == "4") {
        const std::string text =
            MRegistry::GetRegistryValue(session.platform.settings, key, "Schacht" + requestedTray, "-1");
        bin = runtime::roundToLong(runtime::parseNumber(text, session.locale()));
    }
    if (bin < 1) {
        session.log.line(">     Trayregistrierungswert nicht erkannt, Standardtray wird verwendet");
        session.log.line(">     Schlüssel war: '", key, "'");
    } else {
        session.log.line(">     Tray wird vom Wert aus der Registrierung gesetzt, es soll ", std::to_string(bin),
                         " gesetzt werden");
        printer.Option(platform::PageOption::paperBin, bin);
    }
    session.log.line(">     Benutze Tray: ", requestedTray,
                     "  Paperbin:", std::to_string(printer.Option(platform::PageOption::paperBin)));
}

}  // namespace MPrint
