// A command tail as a program gets it here: argument by argument.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform_linux::messenger {

// Cut at single blanks outside of double quotes, the quotes kept, blanks at both ends left out. LinuxSystem puts
// together a tail of them that holds the same arguments: two blanks in a row have an empty one between them, a quote
// without its partner takes the rest.
std::vector<std::string> argumentsOf(std::string_view tail);

}  // namespace platform_linux::messenger
