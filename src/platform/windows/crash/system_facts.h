// What a report of a crash says of the system.
#pragma once

#include <span>

#include "platform/crash/report_text.h"

namespace platform_windows::crash {

// Each step finds something out and can fail without the others; it is done when it returns.
using FactStep = void (*)() noexcept;
std::span<const FactStep> factSteps() noexcept;

// What has been found out so far, in memory that was there before.
std::span<const platform::crash::Fact> systemFacts() noexcept;

void clearFacts() noexcept;

}  // namespace platform_windows::crash
