// The jobs in a printer's queue, whoever sent them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "printer/CPrinterJob.h"

namespace printer {

// The count is asked for afresh every time. The rest is one listing, made when it is first needed and again after
// Refresh(). What the spooler does not tell is platform::SpoolerError.
class CPrinterJobs {
public:
    // The port is borrowed.
    CPrinterJobs(platform::PrintJobs& jobs, std::string printerName)
        : jobs_(&jobs), printerName_(std::move(printerName)) {}

    int Count() const { return jobs_->count(printerName_); }

    // The job at a position from 1, in the queue's order, or of a number; errSubscript where there is none.
    const CPrinterJob& Item(std::size_t position) const;
    const CPrinterJob& ItemByNumber(std::uint32_t number) const;

    auto begin() const { return listing().begin(); }
    auto end() const { return listing().end(); }

    void Refresh() { listing_.reset(); }

private:
    const std::vector<CPrinterJob>& listing() const;

    platform::PrintJobs* jobs_;
    std::string printerName_;
    mutable std::optional<std::vector<CPrinterJob>> listing_;
};

}  // namespace printer
