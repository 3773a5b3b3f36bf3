// Why the server does not do something with a job, in the user's words.
#pragma once

#include <string>

#include "platform/linux/cups/connection.h"
#include "platform/spooler_error.h"

namespace platform_linux::cups {

struct JobTask {
    std::string queue;
    int job = 0;
    std::string undone;  // what became of it: "wurde nicht angehalten"
};

// The error to throw where the server answered the request for the task with one: what was not done and why. Asks the
// server whose the job is and what state it is in.
platform::SpoolerError refusal(Connection& connection, const JobTask& task, const platform::SpoolerError& error);

// The same for a reason that is known.
platform::SpoolerError refusal(std::uint32_t code, const JobTask& task, const std::string& reason);

// Of a job that is not there.
platform::SpoolerError notFound(const JobTask& task);

}  // namespace platform_linux::cups
