#include "platform/linux/spool/linux_spooler.h"

#include <cerrno>
#include <cstdlib>

namespace platform_linux::spool {

namespace {

bool isBuiltin(const std::string& name) { return name == builtinPrinterName; }

// LPDEST counts before PRINTER; CUPS looks for its queues there, too.
bool builtinByEnvironment() {
    const char* name = std::getenv("LPDEST");
    name = name != nullptr ? name : std::getenv("PRINTER");
    return name != nullptr && isBuiltin(name);
}

}  // namespace

platform::Spooler& LinuxSpooler::of(const std::string& name) {
    return isBuiltin(name) ? builtin_ : cups_.require(name).spooler();
}

std::vector<std::string> LinuxSpooler::printerNames() {
    std::vector<std::string> names;
    if (cups::PrintServer* server = cups_.get()) {
        try {
            names = server->spooler().printerNames();
        } catch (const platform::SpoolerError&) {
            if (seen_.queues() || server->expected()) {
                throw;
            }
        }
        if (!names.empty()) {
            seen_.sawQueues();
        }
    }
    names.emplace_back(builtinPrinterName);
    return names;
}

std::optional<std::string> LinuxSpooler::discover(const std::string& name) {
    cups::PrintServer* server = cups_.get();
    return server != nullptr ? server->spooler().discover(name) : std::nullopt;
}

std::string LinuxSpooler::defaultPrinter() {
    cups::PrintServer* server = builtinByEnvironment() ? nullptr : cups_.get();
    if (server == nullptr) {
        return builtinPrinterName;
    }
    try {
        std::string name = server->spooler().defaultPrinter();
        if (name.empty()) {
            name = builtinPrinterName;
        }
        seen_.defaultPrinter(name);
        return name;
    } catch (const platform::SpoolerError& error) {
        const std::string last = seen_.defaultPrinter();
        if (last.empty() || isBuiltin(last)) {
            return builtinPrinterName;
        }
        throw error.about("Drucker „" + last + "“");
    }
}

void LinuxSpooler::setDefaultPrinter(const std::string& name) {
    if (isBuiltin(name) && !isBuiltin(defaultPrinter())) {
        throw platform::SpoolerError(ENOTSUP, "Drucker „" + name +
                                                  "“: CUPS hat einen anderen Standarddrucker. Bitte dort keinen "
                                                  "festlegen oder in der Umgebung LPDEST=\"" +
                                                  name + "\" setzen.");
    }
    of(name).setDefaultPrinter(name);
}

platform::PrinterRecord LinuxSpooler::printer(const std::string& name) {
    platform::PrinterRecord record = of(name).printer(name);
    if (isBuiltin(name) && isBuiltin(defaultPrinter())) {
        record.attributes |= platform::printer_attribute::isDefault;
    }
    return record;
}

std::vector<platform::PaperBin> LinuxSpooler::paperBins(const std::string& name) { return of(name).paperBins(name); }

bool LinuxSpooler::canAdminister(const std::string& name) { return of(name).canAdminister(name); }

void LinuxSpooler::showProperties(const std::string& name) { of(name).showProperties(name); }

platform::ServiceState LinuxSpooler::serviceState() {
    cups::PrintServer* server = cups_.get();
    return server != nullptr ? server->spooler().serviceState() : platform::ServiceState::stopped;
}

bool LinuxSpooler::answersAgain() {
    cups::PrintServer* server = cups_.get();
    return server != nullptr && server->spooler().answersAgain();
}

std::string LinuxSpooler::errorText(std::uint32_t code) {
    cups::PrintServer* server = cups_.get();
    platform::Spooler& who = server != nullptr ? server->spooler() : builtin_;
    return who.errorText(code);
}

std::unique_ptr<platform::PrintDocument> LinuxSpooler::openDocument(const std::string& name, const std::string& title) {
    return of(name).openDocument(name, title);
}

std::unique_ptr<platform::PrintDocument> LinuxSpooler::openSheet() { return builtin_.openSheet(); }

std::unique_ptr<platform::PrintDocument> LinuxSpooler::openFile(const std::string& path, const std::string& title) {
    return builtin_.openFile(path, title);
}

}  // namespace platform_linux::spool
