// Folders of the program's own below the user's home.
#pragma once

#include <string>

namespace platform_linux {

// The program's folder where the environment variable says that the user keeps such files (XDG Base Directory
// 0.8) or, where it names no absolute folder, below the home: userFolder("XDG_CONFIG_HOME", ".config").
// Empty where the user has no home either.
std::string userFolder(const char* variable, const std::string& belowHome);

// Makes the folders before the last "/" of a path that are missing, for the user alone. One that cannot be made is
// noticed by whoever opens a file in it.
void makePrivateFolders(const std::string& path);

}  // namespace platform_linux
