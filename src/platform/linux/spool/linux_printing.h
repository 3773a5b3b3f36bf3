// The ports of printing on Linux in one piece.
#pragma once

#include "platform/linux/documents/document_factory.h"
#include "platform/linux/spool/lazy_print_server.h"
#include "platform/linux/spool/linux_print_jobs.h"
#include "platform/linux/spool/linux_spooler.h"
#include "platform/linux/spool/loaded_modules.h"

namespace platform_linux::spool {

// Making one loads nothing.
class LinuxPrinting {
public:
    // The settings are borrowed.
    LinuxPrinting(documents::PdfOrigin origin, platform::SettingsStore& settings, Modules modules = loadedModules())
        : makeDocument_(documents::pdfDocuments(std::move(origin), std::move(modules.makePdf))),
          cups_([make = std::move(modules.makeServer), this] { return make(makeDocument_); }),
          spooler_(cups_, settings, makeDocument_),
          jobs_(cups_) {}
    LinuxPrinting(const LinuxPrinting&) = delete;
    LinuxPrinting& operator=(const LinuxPrinting&) = delete;

    platform::Spooler& spooler() { return spooler_; }
    platform::PrintJobs& jobs() { return jobs_; }

private:
    documents::DocumentFactory makeDocument_;
    LazyPrintServer cups_;
    LinuxSpooler spooler_;
    LinuxPrintJobs jobs_;
};

}  // namespace platform_linux::spool
