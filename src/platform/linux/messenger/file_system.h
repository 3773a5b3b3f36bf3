// What kind of disk a folder is on.
#pragma once

#include <string>

namespace platform_linux::messenger {

// Whether others may write into the folder without this system's noticing: a network's disk, or one of the machine that
// this one is a guest of.
bool isShared(const std::string& folder);

}  // namespace platform_linux::messenger
