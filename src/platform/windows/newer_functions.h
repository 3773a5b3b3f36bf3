// What the oldest Windows that is served has no function for: the system's is looked up and used where it is there, and
// something else stands for it where it is not.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace platform_windows {

// Milliseconds since some moment in the past. Before Windows Vista for the first 49 days of the process.
std::uint64_t evenMilliseconds() noexcept;

// Whether the names are the same but for capitals and small letters, in no language in particular. Before Windows Vista
// characters that are not seen make no difference either.
bool isSameName(std::wstring_view one, std::wstring_view other) noexcept;

// The open file, as it is called on the disk, behind all links; empty where the system cannot tell, as before Windows
// Vista, which has no links to files.
std::wstring finalPath(HANDLE file);

// So many bytes of the calling thread's stack stay free for what handles its overflow. Before Windows Vista some two
// thousand are.
void guaranteeStack(ULONG bytes) noexcept;

// An exception in a window's procedure is one like any other. Otherwise a 64-bit Windows keeps it to itself, and the
// program goes on as if nothing had happened; before Windows 7 with service pack 1 it always does.
void letExceptionsLeaveCallbacks() noexcept;

}  // namespace platform_windows
