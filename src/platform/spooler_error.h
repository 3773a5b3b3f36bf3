// The error of the ports that speak to the spooler.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "runtime/error.h"

namespace platform {

// Whether the same call may succeed a little later: the spooler does not answer, or the printer takes nothing now. A
// job that was cancelled, in the printer's queue or where the system asked about it, is not to be printed at all.
enum class Recovery { none, possible, cancelled };

// A failed call of the spooler: a run-time error (errPrinter) that also carries the system's own error code.
class SpoolerError : public runtime::Error {
public:
    SpoolerError(std::uint32_t code, std::string detail, Recovery recovery = Recovery::none)
        : Error(runtime::errPrinter, std::move(detail)), code_(code), recovery_(recovery) {}
    std::uint32_t code() const noexcept { return code_; }
    bool mayPass() const noexcept { return recovery_ == Recovery::possible; }
    bool cancelled() const noexcept { return recovery_ == Recovery::cancelled; }

    // The same error, with what it is about in front of its detail: a printer.
    SpoolerError about(const std::string& subject) const { return {code_, subject + ": " + detail(), recovery_}; }

private:
    std::uint32_t code_;
    Recovery recovery_;
};

}  // namespace platform
