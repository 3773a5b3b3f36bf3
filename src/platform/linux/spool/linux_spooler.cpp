#include "platform/linux/spool/linux_spooler.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/linux/spool/builtin_printer.h"
#include "platform/linux/spool/creation_time.h"
#include "platform/linux/spool/document_name.h"
#include "platform/linux/spool/printer_properties.h"
#include "platform/linux/spool/queue_target.h"

namespace platform_linux {

namespace {

bool isBuiltin(const std::string& name) { return name == spool::builtinPrinterName; }

}  // namespace

LinuxSpooler::LinuxSpooler(std::function<CodePage()> codePage, std::string producer, spool::Modules modules)
    : codePage_(std::move(codePage)), producer_(std::move(producer)), modules_(std::move(modules)) {}

std::shared_ptr<PrintQueues> LinuxSpooler::queues() {
    if (!queuesTried_) {
        queuesTried_ = true;
        try {
            queues_ = modules_.makeQueues();
        } catch (const runtime::Error&) {
            queues_.reset();
        }
    }
    return queues_;
}

PrintQueues& LinuxSpooler::queuesFor(const std::string& name) {
    if (queues() == nullptr) {
        throw platform::SpoolerError(ENOENT, "Drucker „" + name +
                                                 "“: nicht vorhanden, denn CUPS ist nicht installiert. " +
                                                 "Bitte das Paket „libcups2“ installieren oder den Drucker „" +
                                                 spool::builtinPrinterName + "“ wählen.");
    }
    return *queues_;
}

std::vector<std::string> LinuxSpooler::printerNames() {
    std::vector<std::string> names;
    if (const auto cups = queues(); cups != nullptr) {
        names = cups->names();
    }
    names.emplace_back(spool::builtinPrinterName);
    return names;
}

std::string LinuxSpooler::defaultPrinter() {
    const auto cups = queues();
    std::string name = cups != nullptr ? cups->defaultName() : std::string();
    if (!name.empty() && !isBuiltin(name)) {
        const std::vector<std::string> names = cups->names();
        if (std::find(names.begin(), names.end(), name) != names.end()) {
            return name;
        }
    }
    return spool::builtinPrinterName;
}

void LinuxSpooler::setDefaultPrinter(const std::string& name) {
    if (!isBuiltin(name)) {
        queuesFor(name).setDefaultName(name);
    } else if (!isBuiltin(defaultPrinter())) {
        throw platform::SpoolerError(ENOTSUP, "Drucker „" + name +
                                                  "“: CUPS hat einen anderen Standarddrucker. Bitte dort keinen "
                                                  "festlegen oder in der Umgebung LPDEST=\"" +
                                                  name + "\" setzen.");
    }
}

platform::PrinterRecord LinuxSpooler::printer(const std::string& name) {
    return isBuiltin(name) ? spool::builtinPrinterRecord(isBuiltin(defaultPrinter())) : queuesFor(name).record(name);
}

int LinuxSpooler::jobCount(const std::string& name) { return isBuiltin(name) ? 0 : queuesFor(name).jobCount(name); }

std::vector<platform::PaperBin> LinuxSpooler::paperBins(const std::string& name) {
    return isBuiltin(name) ? std::vector<platform::PaperBin>() : queuesFor(name).bins(name);
}

bool LinuxSpooler::canAdminister(const std::string& name) {
    return isBuiltin(name) || queuesFor(name).canAdminister(name);
}

void LinuxSpooler::purge(const std::string& name) {
    if (!isBuiltin(name)) {
        queuesFor(name).purge(name);
    }
}

void LinuxSpooler::showProperties(const std::string& name) {
    if (isBuiltin(name)) {
        throw platform::SpoolerError(ENOTSUP, "Am Drucker „" + name + "“ lässt sich nichts einstellen.");
    }
    queuesFor(name).device(name);
    spool::showQueuePage(name);
}

bool LinuxSpooler::serviceRunning() {
    const auto cups = queues();
    return cups != nullptr && cups->running();
}

std::string LinuxSpooler::errorText(std::uint32_t code) {
    if (const auto cups = queues(); cups != nullptr) {
        return cups->errorText(code);
    }
    return code == 0 ? std::string() : std::generic_category().message(static_cast<int>(code));
}

std::unique_ptr<platform::PrintDocument> LinuxSpooler::openDocument(const std::string& name, const std::string& title) {
    std::unique_ptr<spool::DocumentTarget> target;
    if (isBuiltin(name)) {
        target = std::make_unique<spool::BuiltinPrinter>(title);
    } else {
        queuesFor(name);
        target = std::make_unique<spool::QueueTarget>(queues_, name, title);
    }
    PdfSettings settings;
    settings.title = spool::documentName(title);
    settings.producer = producer_;
    settings.created = spool::creationTime();
    settings.codePage = codePage_();
    return std::make_unique<spool::PdfPrintDocument>(std::move(target), std::move(settings), modules_.makePdf);
}

}  // namespace platform_linux
