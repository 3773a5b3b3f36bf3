// The drives of the host's paths, as in "C:\BILDER\LOGO.BMP".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/settings_store.h"

namespace platform {

inline constexpr std::string_view hostSeparators = "\\/";

struct HostPath {
    std::string letter;  // "C"
    std::string rest;    // "\BILDER\LOGO.BMP"; not empty
    bool fromRoot() const { return hostSeparators.find(rest.front()) != std::string_view::npos; }
};

// Nothing for a path without a drive, or with nothing behind it.
std::optional<HostPath> splitDrive(std::string_view path);

// Where the drive lies for the user: the value of its letter in the key "HKCU\Software\Velmora\KRVWinPr\3.0\Laufwerke";
// empty where the settings have none.
std::string folderOfDrive(const std::string& letter, SettingsStore& settings);

}  // namespace platform
