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

    // Whether a server is meant to be there: it is named in the environment or in client.conf, or installed here.
    virtual bool expected() = 0;

    // Both are the server's and live as long.
    virtual platform::Spooler& spooler() = 0;
    virtual platform::PrintJobs& jobs() = 0;
};

// The module's entry function. The factory makes the documents for the queues.
using PrintServerFactory = std::unique_ptr<PrintServer> (*)(documents::DocumentFactory makeDocument);

}  // namespace platform_linux::cups
