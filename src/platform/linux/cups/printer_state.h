// The state of a queue as the flags of a printer's information record.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform_linux::cups {

// State: IPP printer-state (3 idle, 4 processing, 5 stopped). Reasons: keywords of printer-state-reasons as registered
// for IPP (RFC 8011, section 5.4.12, and PWG 5100.9), with or without "-error", "-warning" or "-report" at the end.
// What says nothing about the printer's readiness, such as paper that runs low, gives no flag.
std::uint32_t printerStatus(int state, const std::vector<std::string>& reasons, bool acceptsJobs);

}  // namespace platform_linux::cups
