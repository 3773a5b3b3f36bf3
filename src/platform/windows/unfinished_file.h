// Files that are not finished yet, and what a killed process leaves of them.
#pragma once

#include <string>

namespace platform_windows {

// A name for one that nobody can guess: "krvwinpr-" and letters at random, ".tmp".
std::wstring unfinishedName();

// Removes such files from a folder (with its separator) that nobody has written to for hours or has open.
void removeLeftovers(const std::wstring& folder);

}  // namespace platform_windows
