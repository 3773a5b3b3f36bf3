// Processes that live on when the messenger ends.
#pragma once

#include <windows.h>

#include <string>

#include "platform/windows/handle.h"

namespace platform_windows::messenger {

struct NewProcess {
    KernelHandle handle;
    DWORD number = 0;
    DWORD error = 0;  // a system error code
};

// Native path, the whole command line, and a folder as users write it. Nothing is inherited but the environment.
NewProcess startProcess(const std::wstring& program, std::wstring command, const std::wstring& folder);

}  // namespace platform_windows::messenger
