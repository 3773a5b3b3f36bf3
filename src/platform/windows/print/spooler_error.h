// The errors that failed calls of the spooler and of GDI become.
#pragma once

#include <string>

#include "platform/spooler.h"
#include "platform/windows/print/system_headers.h"

namespace platform_windows::print {

// The code of the call that failed just now; ERROR_GEN_FAILURE where it left none.
DWORD lastError() noexcept;

// Says which printer it was, what the system says, and what to do. The printer's name may be empty.
platform::SpoolerError failure(DWORD code, const std::string& printer);

// Whether the code says that the user did not want the job any more.
bool isCancel(DWORD code) noexcept;

// The same for a document on its way to the printer: a full disk is errDiskFull, a cancel one that says so, anything
// else the error above.
[[noreturn]] void throwDocumentFailure(DWORD code, const std::string& printer);

}  // namespace platform_windows::print
