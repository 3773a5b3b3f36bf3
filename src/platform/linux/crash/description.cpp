#include "platform/linux/crash/description.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/linux/crash/stack_walk.h"

namespace platform_linux::crash {

namespace {

using platform::crash::FixedText;

struct SignalName {
    int number;
    std::string_view what;
    std::string_view name;
    bool hasAddress;
};

constexpr std::array signalNames = {
    SignalName{SIGSEGV, "Zugriffsverletzung", "SIGSEGV", true},
    SignalName{SIGBUS, "Speicher nicht erreichbar", "SIGBUS", true},
    SignalName{SIGILL, "Unzulässiger Befehl", "SIGILL", true},
    SignalName{SIGFPE, "Rechenfehler", "SIGFPE", true},
    SignalName{SIGABRT, "Abbruch durch das Programm selbst", "SIGABRT", false},
    SignalName{SIGTRAP, "Haltepunkt", "SIGTRAP", true},
    SignalName{SIGSYS, "Unzulässiger Aufruf des Systems", "SIGSYS", true},
};

// Whether an address lies where the stack goes on growing.
bool isBehindStack(std::uintptr_t address, std::uintptr_t stack) noexcept {
    constexpr std::uintptr_t near = 128 << 10;
    return stack != 0 && address + near > stack && address < stack + near;
}

}  // namespace

void describeSignal(FixedText& text, int signal, const siginfo_t& info, const void* context) noexcept {
    const auto* known = std::ranges::find(signalNames, signal, &SignalName::number);
    const bool sent = info.si_code <= 0;
    const auto address = reinterpret_cast<std::uintptr_t>(info.si_addr);
    const bool overflow = !sent && signal == SIGSEGV && isBehindStack(address, stackPointerOf(context));
    if (known == signalNames.end()) {
        text << "Signal ";
        text.number(static_cast<std::uint64_t>(signal));
    } else {
        text << (overflow ? "Stapelüberlauf" : known->what) << " (" << known->name << ")";
    }
    if (sent && info.si_pid != ::getpid()) {
        text << ", geschickt von Prozess ";
        text.number(static_cast<std::uint64_t>(info.si_pid));
    } else if (!sent && known != signalNames.end() && known->hasAddress) {
        text << ", Adresse ";
        text.address(address);
    }
}

}  // namespace platform_linux::crash
