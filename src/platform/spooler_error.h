// The error of the ports that speak to the spooler.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "runtime/error.h"

namespace platform {

// A failed call of the spooler: a run-time error (errPrinter) that also carries the system's own error code.
class SpoolerError : public runtime::Error {
public:
    SpoolerError(std::uint32_t code, std::string detail) : Error(runtime::errPrinter, std::move(detail)), code_(code) {}
    std::uint32_t code() const noexcept { return code_; }

private:
    std::uint32_t code_;
};

}  // namespace platform
