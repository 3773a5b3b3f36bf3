#include "printer/printer_choice.h"

#include <algorithm>

#include "runtime/text.h"

namespace printer {

bool isBuiltinPrinter(platform::Spooler& spooler, const std::string& name) {
    return !name.empty() && runtime::upperCase(name) == runtime::upperCase(spooler.builtinPrinter());
}

std::optional<std::string> installedPrinter(platform::Spooler& spooler, const std::string& name) {
    if (name.empty()) {
        return std::nullopt;
    }
    const auto isWanted = [wanted = runtime::upperCase(name)](const std::string& candidate) {
        return runtime::upperCase(candidate) == wanted;
    };
    if (isBuiltinPrinter(spooler, name)) {
        return spooler.builtinPrinter();
    }
    try {
        const std::vector<std::string> names = spooler.printerNames();
        const auto found = std::find_if(names.begin(), names.end(), isWanted);
        if (found != names.end()) {
            return *found;
        }
    } catch (const platform::SpoolerError& error) {
        throw error.about("Drucker „" + name + "“");
    }
    return spooler.discover(name);
}

std::unique_ptr<Printer> choosePrinter(session::Session& session, const std::optional<std::string>& installed,
                                       const std::string& title, Patience patience) {
    platform::Spooler& spooler = session.platform.spooler;
    std::string name = installed ? *installed : patience.during([&] { return spooler.defaultPrinter(); });
    session.activity().printer = name;
    auto chosen = std::make_unique<Printer>(spooler, std::move(name), title, std::move(patience));
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
