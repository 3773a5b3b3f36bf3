// What is loaded where an address lies. Asks the loader without its lock, which what has crashed may hold.
#pragma once

#include <span>

#include "platform/crash/report_text.h"

namespace platform_linux::crash {

platform::crash::Module moduleAt(std::uintptr_t address) noexcept;

// The program and those of its modules that are loaded. Lasts until the next call.
std::span<const platform::crash::Module> ownModules() noexcept;

}  // namespace platform_linux::crash
