#include "platform/linux/spool/linux_print_jobs.h"

#include <cerrno>

#include "platform/linux/spool/builtin_spooler.h"

namespace platform_linux::spool {

platform::PrintJobs& LinuxPrintJobs::jobsWith(const std::string& printer, std::uint32_t number) {
    if (printer == builtinPrinterName) {
        throw platform::SpoolerError(ENOENT, "Drucker „" + printer + "“: Auftrag " + std::to_string(number) +
                                                 " gibt es nicht, denn dieser Drucker hat keine Warteschlange.");
    }
    return cups_.require(printer).jobs();
}

int LinuxPrintJobs::count(const std::string& printer) {
    return printer == builtinPrinterName ? 0 : cups_.require(printer).jobs().count(printer);
}

std::vector<platform::PrintJob> LinuxPrintJobs::list(const std::string& printer) {
    return printer == builtinPrinterName ? std::vector<platform::PrintJob>()
                                         : cups_.require(printer).jobs().list(printer);
}

void LinuxPrintJobs::control(const std::string& printer, std::uint32_t number, platform::JobOperation operation) {
    jobsWith(printer, number).control(printer, number, operation);
}

void LinuxPrintJobs::setPriority(const std::string& printer, std::uint32_t number, std::uint32_t priority) {
    jobsWith(printer, number).setPriority(printer, number, priority);
}

void LinuxPrintJobs::purge(const std::string& printer) {
    if (printer != builtinPrinterName) {
        cups_.require(printer).jobs().purge(printer);
    }
}

void LinuxPrintJobs::resumePrinter(const std::string& printer) {
    if (printer != builtinPrinterName) {
        cups_.require(printer).jobs().resumePrinter(printer);
    }
}

std::unique_ptr<platform::QueueWatch> LinuxPrintJobs::watch(const std::string& printer) {
    return printer == builtinPrinterName ? nullptr : cups_.require(printer).jobs().watch(printer);
}

}  // namespace platform_linux::spool
