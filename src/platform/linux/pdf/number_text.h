// Numbers as PDF writes them, in their shortest form: "12", ".5", "-.12".
#pragma once

#include <cstdint>
#include <string>

namespace platform_linux::pdf {

void appendInteger(std::string& text, std::int64_t value);

// Fixed-point with at most the given number of decimals (0 to 9), zeros that say nothing left out. The value's
// magnitude is below 1e15.
void appendReal(std::string& text, double value, int decimals);

}  // namespace platform_linux::pdf
