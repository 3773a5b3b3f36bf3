#include "platform/linux/cups/cups_print_jobs.h"

namespace platform_linux::cups {

int CupsPrintJobs::count(const std::string& queue) {
    const IppMessage answer = connection_.attributes(queue, {"queued-job-count"});
    return number(answer.get(), "queued-job-count", 0);
}

void CupsPrintJobs::purge(const std::string& queue) {
    connection_.request(queue, makeRequest(IPP_OP_CANCEL_JOBS, queue));
}

}  // namespace platform_linux::cups
