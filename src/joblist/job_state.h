// What can be done with a job, as its status says.
#pragma once

#include <algorithm>
#include <vector>

#include "printer/CPrinterJob.h"

namespace joblist {

inline bool hasFlag(const printer::CPrinterJob& job, std::uint32_t flags) { return (job.Status() & flags) != 0; }

inline bool canBeCancelled(const printer::CPrinterJob& job) {
    return !hasFlag(job, platform::job_status::deleting | platform::job_status::deleted);
}
inline bool canBePaused(const printer::CPrinterJob& job) {
    return canBeCancelled(job) && !hasFlag(job, platform::job_status::paused | platform::job_status::printed);
}
inline bool canBeResumed(const printer::CPrinterJob& job) {
    return canBeCancelled(job) && hasFlag(job, platform::job_status::paused);
}
inline bool canBeRestarted(const printer::CPrinterJob& job) {
    return canBeCancelled(job) && !hasFlag(job, platform::job_status::spooling);
}

template <typename Predicate>
std::vector<printer::CPrinterJob> thoseOf(std::vector<printer::CPrinterJob> jobs, const Predicate& predicate) {
    std::erase_if(jobs, [&](const printer::CPrinterJob& job) { return !predicate(job); });
    return jobs;
}

}  // namespace joblist
