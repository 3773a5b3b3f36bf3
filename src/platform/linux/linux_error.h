// Failures of system calls as run-time errors.
#pragma once

#include <string>

namespace platform_linux {

// Throws the runtime::Error for an errno value that a call about this path gave. The detail is the path, the reason and
// what to do about it. ENOENT says that the file is missing, ENOTDIR that a folder on the way to it is.
[[noreturn]] void throwFileError(int error, const std::string& path);

}  // namespace platform_linux
