// Port: the jobs in the printers' queues. A job counts them; the rest is for the job list.
#pragma once

#include <string>

#include "platform/spooler_error.h"

namespace platform {

// Printers are named by their device names, UTF-8. Every call throws SpoolerError when there is no printer of that name
// or the spooler does not answer.
class PrintJobs {
public:
    virtual ~PrintJobs() = default;

    // Jobs in the printer's queue now, whoever sent them.
    virtual int count(const std::string& printer) = 0;

    // Removes every job from the printer's queue.
    virtual void purge(const std::string& printer) = 0;
};

}  // namespace platform
