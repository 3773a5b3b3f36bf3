#include "platform/linux/spool/linux_print_jobs.h"

#include "platform/linux/spool/builtin_spooler.h"

namespace platform_linux::spool {

int LinuxPrintJobs::count(const std::string& printer) {
    return printer == builtinPrinterName ? 0 : cups_.require(printer).jobs().count(printer);
}

void LinuxPrintJobs::purge(const std::string& printer) {
    if (printer != builtinPrinterName) {
        cups_.require(printer).jobs().purge(printer);
    }
}

}  // namespace platform_linux::spool
