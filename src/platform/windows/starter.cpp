#include "platform/windows/starter.h"

#include <windows.h>

#include <array>

namespace platform_windows {

Starter::Starter() {
    std::array<wchar_t, MAX_PATH> name{};
    const DWORD length = ::GetEnvironmentVariableW(starterVariable, name.data(), MAX_PATH);
    if (length == 0 || length >= MAX_PATH) {
        return;
    }
    ::SetEnvironmentVariableW(starterVariable, nullptr);
    event_ = KernelHandle(::OpenEventW(EVENT_MODIFY_STATE, FALSE, name.data()));
}

void Starter::tellCompletion() noexcept {
    if (event_) {
        ::SetEvent(event_.get());
    }
}

}  // namespace platform_windows
