// What has happened, in a few words.
#pragma once

#include <windows.h>

#include <cstdint>

#include "platform/crash/fixed_text.h"

namespace platform_windows::crash {

// "Zugriffsverletzung (0xc0000005) beim Lesen von 0x0"
void describeException(platform::crash::FixedText& text, const EXCEPTION_RECORD& exception) noexcept;

// For the handler of std::terminate(): the exception that nobody has caught, where there is one. Its number as a
// run-time error, 51 (internal error) for any that is none.
std::int32_t describeTermination(platform::crash::FixedText& text) noexcept;

}  // namespace platform_windows::crash
