#include "printer/printer_choice.h"

#include <algorithm>

#include "runtime/text.h"

namespace printer {

std::optional<std::string> installedPrinter(platform::Spooler& spooler, const std::string& name) {
    if (name.empty()) {
        return std::nullopt;
    }
    const std::string wanted = runtime::upperCase(name);
    const std::vector<std::string> names = spooler.printerNames();
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& candidate) {
        return runtime::upperCase(candidate) == wanted;
    });
    return found != names.end() ? std::optional(*found) : std::nullopt;
}

std::unique_ptr<Printer> choosePrinter(session::Session& session, const std::optional<std::string>& installed,
                                       const std::string& title) {
    platform::Spooler& spooler = session.platform.spooler;
    auto chosen = std::make_unique<Printer>(spooler, installed ? *installed : spooler.defaultPrinter(), title);
    session.log.line(">   verwendeter Druckertreiber: ", chosen->DeviceName());
    return chosen;
}

std::string noPrinterReason(const session::Program& program) {
    return "Es sind keine Windowsdruckertreiber auf diesem Rechner installiert. Deshalb kann " + program.name +
           " nicht drucken.";
}

void showNoPrinter(session::Session& session) {
    session.platform.dialogs.messageBox(noPrinterReason(session.program) + "\r\r" + jobCancelled, platform::Buttons::ok,
                                        platform::Icon::critical, session.program.title);
}

}  // namespace printer
