// Failures of system calls as run-time errors.
#pragma once

#include <string>

#include "runtime/error.h"

namespace platform_linux {

// The run-time error that an errno value means; errDeviceIo for one that is none of the usual.
runtime::ErrorNumber errorNumber(int error);

// The reason as a German clause, with the remedy where there is one; the system's own text for an unusual error.
std::string errorReason(int error);

// Throws the runtime::Error for an errno value that a call about this path gave. The detail is the path, the reason and
// what to do about it. ENOENT says that the file is missing, ENOTDIR that a folder on the way to it is.
[[noreturn]] void throwFileError(int error, const std::string& path);

}  // namespace platform_linux
