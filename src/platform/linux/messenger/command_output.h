// Tools of the system, and what they say.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace platform_linux::messenger {

struct CommandOutput {
    bool done = false;  // it was there, ended in time, and says that it did what it was to do
    std::string text;   // all that it wrote
};

// Runs a program of the PATH with its arguments, without input. One that is not done in time is ended.
CommandOutput outputOf(std::vector<std::string> command, std::chrono::milliseconds limit);

}  // namespace platform_linux::messenger
