// What has happened, in a few words.
#pragma once

#include <windows.h>

#include "platform/crash/fixed_text.h"

namespace platform_windows::crash {

// "Zugriffsverletzung (0xc0000005) beim Lesen von 0x0"
void describeException(platform::crash::FixedText& text, const EXCEPTION_RECORD& exception) noexcept;

}  // namespace platform_windows::crash
