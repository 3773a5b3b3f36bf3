#include "report/tray_selection.h"

#include "settings/MRegistry.h"
#include "settings/printer_settings.h"

namespace report {

void selectTray(session::Session& session, printer::Printer& printer, const std::string& requestedTray) {
    const std::string& deviceName = printer.DeviceName();
    const std::string key = settings::MRegistry::printerKey(settings::keyNameOf(session, deviceName));
    const std::int32_t bin = settings::binOfTray(session, key, requestedTray);
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

}  // namespace report
