// What the spooler takes from modules, loaded at the first call.
#pragma once

#include <functional>
#include <memory>

#include "platform/linux/cups/print_queues.h"
#include "platform/linux/spool/pdf_print_document.h"

namespace platform_linux::spool {

struct Modules {
    // Throws runtime::Error where CUPS is not installed.
    std::function<std::unique_ptr<PrintQueues>()> makeQueues;
    PdfFactory makePdf;
};

// The modules "cups" and "pdf" beside the program.
Modules loadedModules();

}  // namespace platform_linux::spool
