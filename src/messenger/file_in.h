// Files of folders whose paths are those of the system.
#pragma once

#include <string>
#include <string_view>

namespace messenger {

// The path of a file in an absolute folder, with the separator of the folder's system.
inline std::string fileIn(const std::string& folder, std::string_view name) {
    const char separator = folder.starts_with('/') ? '/' : '\\';
    return folder + (folder.ends_with(separator) ? "" : std::string(1, separator)) + std::string(name);
}

}  // namespace messenger
