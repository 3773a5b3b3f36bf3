// What is loaded where an address lies.
#pragma once

#include "platform/crash/report_text.h"

namespace platform_windows::crash {

void setOwnRoutines(platform::crash::SymbolTable routines) noexcept;

// The program's own file.
platform::crash::Module ownModule() noexcept;

// The name lasts until the next call. Asks the kernel only; the loader may be what has crashed.
platform::crash::Module moduleAt(std::uintptr_t address) noexcept;

}  // namespace platform_windows::crash
