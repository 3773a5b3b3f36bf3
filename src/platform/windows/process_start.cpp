#include "platform/windows/process_start.h"

#include <windows.h>

namespace platform_windows {

void beginProcess() noexcept {
    // A drive without a disk is an error for whoever asks for it, and a program that has crashed is over: no box of the
    // system waits for an answer.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX | SEM_NOGPFAULTERRORBOX);
    // The current directory is the host's; nothing that lies there is to be loaded as a part of the program.
    ::SetDllDirectoryW(L"");
}

}  // namespace platform_windows
