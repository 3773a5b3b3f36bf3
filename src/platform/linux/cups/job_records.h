// The jobs of a queue, as the server tells them, as the spooler's job records.
#pragma once

#include <cups/ipp.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/print_jobs.h"

namespace platform_linux::cups {

// What a job's record is made of (RFC 8011, sections 5.3 and 5.3.8): for the requested attributes of Get-Jobs.
std::vector<const char*> jobAttributes();

// The jobs of an answer, in the order in which they are printed: the one that is being printed, then the others as the
// server has them. The priority is IPP's (1 to 100); what the server does not tell, as it may of other people's jobs,
// is empty. The times are those of the server's clock.
std::vector<platform::PrintJob> jobRecords(ipp_t* answer);

// State: IPP job-state of a job that has not ended (3 pending, 4 held, 5 processing, 6 stopped). Reasons: keywords of
// job-state-reasons (RFC 8011, section 5.3.8); those of the printer, as printerStatus() takes them, count while it
// prints the job.
std::uint32_t jobStatus(int state, const std::vector<std::string>& reasons,
                        const std::vector<std::string>& printerReasons);

}  // namespace platform_linux::cups
