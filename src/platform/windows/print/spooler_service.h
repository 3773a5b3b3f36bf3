// The system's print service.
#pragma once

namespace platform_windows::print {

// Whether the service "Spooler" has been started, as the system's management service says; false where that one does
// not know or does not answer. Takes up to two minutes where it hangs.
bool spoolerServiceRunning() noexcept;

}  // namespace platform_windows::print
