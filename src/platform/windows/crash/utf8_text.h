// Text of the system, made UTF-8 in memory that was there before.
#pragma once

#include <string_view>

#include "platform/crash/fixed_text.h"

namespace platform_windows::crash {

// What is no valid text becomes U+FFFD.
void addUtf8(platform::crash::FixedText& text, std::wstring_view added) noexcept;

}  // namespace platform_windows::crash
