// Who started the program, where that is the messenger of hosts inside an emulator.
#pragma once

#include "platform/windows/handle.h"

namespace platform_windows {

// The environment variable with the name of an event.
inline constexpr const wchar_t* starterVariable = L"KRVWINPR_STARTER";

// Takes over the event from the environment, so that no program that this one starts has it.
class Starter {
public:
    Starter();

    bool isThere() const noexcept { return static_cast<bool>(event_); }

    // Says that the completion file is written: sets the event.
    void tellCompletion() noexcept;

private:
    KernelHandle event_;
};

}  // namespace platform_windows
