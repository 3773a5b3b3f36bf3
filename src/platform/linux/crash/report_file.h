// The log of error reports as a file, and files as a handler of crashes writes them: by system calls only.
#pragma once

#include <sys/types.h>

#include <string_view>

namespace platform_linux::crash {

// Appends an entry to the log, whole or not at all; where the log would grow too long, its older entries go, in one
// step. Makes the folders before it that are missing. An errno value.
int appendEntry(const char* log, std::string_view entry) noexcept;

// The file of that name has the content afterwards, which is two pieces, in one step, or is as it was before; an errno
// value. A new one belongs to whom its folder belongs to.
int replaceByParts(const char* path, std::string_view first, std::string_view second, mode_t mode) noexcept;

// Both pieces, one behind the other; an errno value.
int writeParts(int file, std::string_view first, std::string_view second) noexcept;

}  // namespace platform_linux::crash
