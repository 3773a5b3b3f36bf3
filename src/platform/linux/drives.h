// The drives of the host's paths, as in "C:\BILDER\LOGO.BMP".
#pragma once

#include <string>

#include "platform/settings_store.h"

namespace platform_linux {

// The path without its drive: below the folder that the settings give for the letter (value "C" of the key
// "HKCU\Software\Velmora\KRVWinPr\3.0\Laufwerke", an absolute path), otherwise only the letter is dropped. Without a
// separator behind the drive it starts from the current directory where that is on the drive, else from the drive's
// folder. A path without a drive stays, and so does one of which the first name exists as it is written.
std::string withoutDrive(const std::string& path, platform::SettingsStore& settings);

}  // namespace platform_linux
