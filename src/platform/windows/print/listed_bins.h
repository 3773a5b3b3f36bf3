// The paper bins as a driver lists them.
#pragma once

#include <functional>
#include <vector>

#include "platform/spooler.h"
#include "platform/windows/print/system_headers.h"

namespace platform_windows::print {

// Asks the driver for DC_BINS or DC_BINNAMES, as DeviceCapabilities() does: without a place for the answer it tells how
// many there are. It is never told how much room there is, and fills what it likes.
using BinQuery = std::function<int(WORD what, wchar_t* into)>;

// In the driver's order; empty where it lists none, and without names where it has fewer of them.
std::vector<platform::PaperBin> listedBins(const BinQuery& ask);

}  // namespace platform_windows::print
