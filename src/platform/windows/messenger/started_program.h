// A program that the messenger has started.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "platform/windows/handle.h"
#include "platform/windows/messenger/event_port.h"

namespace platform_windows::messenger {

// It lives on when the object goes.
class StartedProgram {
public:
    // Native paths; the tail as it stands behind the program's name. What happens is told to the port with the key.
    // errFileNotFound where there is no such program, errPathNotFound where there is no such folder.
    StartedProgram(const std::wstring& program, const std::wstring& folder, const std::wstring& tail,
                   const EventPort& port, ULONG_PTR key);

    DWORD number() const noexcept { return number_; }

    // Whether the program says that it has written the completion file; true only once.
    bool takeCompletion() noexcept;

    // How it ended: empty where it did so as it should, otherwise a clause.
    std::string how() const;

private:
    KernelHandle written_;
    KernelHandle process_;
    DWORD number_ = 0;
    bool told_ = false;
    std::optional<SignalWait> writtenWait_;
    std::optional<SignalWait> endWait_;
};

// "Zugriffsverletzung (0xC0000005)"; empty for 0.
std::string howItEnded(DWORD exitCode);

}  // namespace platform_windows::messenger
