// Interface of the module "cups": the print server CUPS as the ports have it.
#pragma once

#include <memory>

#include "platform/linux/documents/document_factory.h"
#include "platform/print_jobs.h"
#include "platform/spooler.h"

namespace platform_linux::cups {

// The code of a SpoolerError is the IPP status, or an errno value below 0x400 where CUPS cannot be reached.
class PrintServer {
public:
    virtual ~PrintServer() = default;

    // The queues; none where CUPS cannot be reached. Both are the server's and live as long.
    virtual platform::Spooler& spooler() = 0;
    virtual platform::PrintJobs& jobs() = 0;
};

// The module's entry function. The factory makes the documents for the queues.
using PrintServerFactory = std::unique_ptr<PrintServer> (*)(documents::DocumentFactory makeDocument);

}  // namespace platform_linux::cups
