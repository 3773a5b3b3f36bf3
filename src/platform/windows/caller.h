// Whoever has asked the program something at a shell.
#pragma once

#include <string>

namespace platform_windows {

// Answers on standard output where that leads into a file or a program, otherwise on the caller's console. Whether
// there is one of these.
bool tellCaller(const std::string& text);

}  // namespace platform_windows
