// What the printers take from modules, loaded at the first call.
#pragma once

#include <functional>
#include <memory>

#include "platform/linux/cups/print_server.h"
#include "platform/linux/documents/document_factory.h"

namespace platform_linux::spool {

struct Modules {
    // Throws runtime::Error where CUPS is not installed.
    std::function<std::unique_ptr<cups::PrintServer>(documents::DocumentFactory)> makeServer;
    documents::PdfFactory makePdf;
};

// The modules "cups" and "pdf" beside the program.
Modules loadedModules();

}  // namespace platform_linux::spool
