// Where the program, the system and the user's data lie; native paths.
#pragma once

#include <string>

namespace platform_windows {

std::wstring programFile();

// With a separator at its end; empty where the system does not tell.
std::wstring systemFolder();

// What the user's programs keep on this machine, without a separator at its end; empty where the system does not tell.
std::wstring localData();

}  // namespace platform_windows
