// What has happened, in a few words.
#pragma once

#include <csignal>

#include "platform/crash/fixed_text.h"

namespace platform_linux::crash {

// "Zugriffsverletzung (SIGSEGV), Adresse 0x0"; the context is that of the signal's handler.
void describeSignal(platform::crash::FixedText& text, int signal, const siginfo_t& info, const void* context) noexcept;

}  // namespace platform_linux::crash
