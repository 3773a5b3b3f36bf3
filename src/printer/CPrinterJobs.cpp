#include "printer/CPrinterJobs.h"

#include <algorithm>

#include "runtime/error.h"

namespace printer {

const CPrinterJob& CPrinterJobs::Item(std::size_t position) const {
    const std::vector<CPrinterJob>& jobs = listing();
    if (position < 1 || position > jobs.size()) {
        throw runtime::Error(runtime::errSubscript, "Der Drucker „" + printerName_ + "“ hat keinen Auftrag an Stelle " +
                                                        std::to_string(position) + " seiner Warteschlange");
    }
    return jobs[position - 1];
}

const CPrinterJob& CPrinterJobs::ItemByNumber(std::uint32_t number) const {
    const std::vector<CPrinterJob>& jobs = listing();
    const auto found =
        std::find_if(jobs.begin(), jobs.end(), [number](const CPrinterJob& job) { return job.JobNumber() == number; });
    if (found == jobs.end()) {
        throw runtime::Error(runtime::errSubscript,
                             "Der Drucker „" + printerName_ + "“ hat keinen Auftrag Nummer " + std::to_string(number));
    }
    return *found;
}

const std::vector<CPrinterJob>& CPrinterJobs::listing() const {
    if (!listing_) {
        std::vector<platform::PrintJob> records = jobs_->list(printerName_);
        std::vector<CPrinterJob> jobs;
        jobs.reserve(records.size());
        for (platform::PrintJob& record : records) {
            jobs.emplace_back(*jobs_, printerName_, std::move(record));
        }
        listing_ = std::move(jobs);
    }
    return *listing_;
}

}  // namespace printer
