// Files that others hold. Virus scanners, indexers and backups open what was just written, and a writer what it has not
// finished; most are gone after some milliseconds.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string>

#include "platform/windows/file_calls.h"

namespace platform_windows {

// How long others are waited for, in milliseconds: until they let a file be replaced, behind which there is another way
// to write it, and until they let it be read or written at all.
inline constexpr DWORD replacingPatience = 500;
inline constexpr DWORD openingPatience = 2000;

// Whether a call failed because of another program's use of the file, or because the connection to its server broke.
bool isInUse(DWORD error) noexcept;

// The same for a file that could not be opened or deleted: the system says "no rights" of one, too, that is being
// deleted and goes with the last one who has it open.
bool isInUse(DWORD error, const std::wstring& path);

// The same for a file that could not be replaced: it says that, too, of one that somebody has open.
bool mayBeInUse(DWORD error) noexcept;

// openFile(), and again for as long as others have the file in a way that forbids it.
OpenedFile openPatiently(DWORD patience, const std::wstring& path, DWORD access, DWORD disposition);

// Tries once, and again in growing pauses for as long as it fails for a reason that may pass. The last attempt's error.
template <typename MayPass, typename Attempt>
DWORD patiently(DWORD patience, const MayPass& mayPass, const Attempt& attempt) {
    constexpr DWORD longest = 256;
    DWORD pause = 1;
    DWORD waited = 0;
    DWORD error = attempt();
    while (waited < patience && mayPass(error)) {
        const DWORD start = ::GetTickCount();
        ::Sleep(pause);
        error = attempt();
        waited += std::max(pause, ::GetTickCount() - start);  // a server may take its time to say no
        pause = std::min(2 * pause, longest);
    }
    return error;
}

}  // namespace platform_windows
