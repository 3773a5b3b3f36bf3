// What has happened, in a few words.
#pragma once

#include <csignal>
#include <cstdint>

#include "platform/crash/fixed_text.h"

namespace platform_linux::crash {

// "Zugriffsverletzung (SIGSEGV), Adresse 0x0"; the context is that of the signal's handler.
void describeSignal(platform::crash::FixedText& text, int signal, const siginfo_t& info, const void* context) noexcept;

// For the handler of std::terminate(): the exception that nobody has caught, where there is one. Its number as a
// run-time error, 51 (internal error) for any that is none.
std::int32_t describeTermination(platform::crash::FixedText& text) noexcept;

}  // namespace platform_linux::crash
