// The shell that the program was started at, and the terminal that somebody watches.
#pragma once

#include <string_view>

namespace platform_linux {

// Whether what is asked for may be answered on standard output: a desktop's journal, where a program started by a
// click has it, is read by nobody who asks.
bool isShellsOutput() noexcept;

// Whether standard error is a terminal that can write over a line, with this program in front. A program that has the
// whole screen, and starts this one, has switched the terminal's editing of lines off.
bool terminalIsWatched() noexcept;

// Replaces the line that the terminal is in, cut at its edge; without waiting for a terminal that has been stopped.
void writeOverTerminalLine(std::string_view line);

}  // namespace platform_linux
