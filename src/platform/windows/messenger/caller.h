// Whoever has called the messenger with a command.
#pragma once

#include <string>

namespace platform_windows::messenger {

// Answers on standard output where that leads into a file or a program, otherwise on the caller's console, otherwise in
// a box.
void tellCaller(const std::string& text);

}  // namespace platform_windows::messenger
