// What a report of a crash says of the system.
#pragma once

#include <span>

#include "platform/crash/report_text.h"

namespace platform_linux::crash {

// Steps that find something out, and can fail without each other: the system, its settings and the desktop from a fixed
// list of variables of the environment; memory, room on the disk, and what the program knows of screen and code page.
void findSystem() noexcept;
void findMachine() noexcept;

// What has been found out so far, in memory that was there before.
std::span<const platform::crash::Fact> systemFacts() noexcept;

void clearFacts() noexcept;

}  // namespace platform_linux::crash
