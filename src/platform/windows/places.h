// Where the program and the system lie; native paths.
#pragma once

#include <string>

namespace platform_windows {

std::wstring programFile();

// With a separator at its end; empty where the system does not tell.
std::wstring systemFolder();

}  // namespace platform_windows
