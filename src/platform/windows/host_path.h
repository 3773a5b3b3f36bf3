// Paths of a host inside an emulator, whose drives lie elsewhere outside of it.
#pragma once

#include <string>

namespace platform_windows {

// The path as it is outside: below the folder that the settings give for its drive (platform/host_drives.h). Without a
// separator behind the drive it starts from the current directory where that is on the drive, else from the drive's
// folder. It stays as it is below the current directory, which is an outer one, and where the drive or its folder is
// not to be found, because what the user chooses and the program makes has outer paths, too.
std::string outerPath(const std::string& path);

}  // namespace platform_windows
