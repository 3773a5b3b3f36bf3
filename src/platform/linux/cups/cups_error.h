// What CUPS refuses, in the user's words.
#pragma once

#include <cstdint>
#include <string>

#include "platform/spooler.h"

namespace platform_linux::cups {

// Codes below this one are errno values, from it on IPP status codes (RFC 8011, section B.1.2).
inline constexpr std::uint32_t firstIppStatus = 0x400;

// The meaning of an IPP status or an errno value; empty where it has none.
std::string statusText(std::uint32_t code);

// The error to throw: the queue (empty for CUPS itself), what CUPS said of it (may be empty), and what to do. It may
// pass where CUPS does not answer or the queue takes no jobs now.
platform::SpoolerError failure(std::uint32_t code, const std::string& queue, const std::string& said);

}  // namespace platform_linux::cups
