#include "platform/linux/drives.h"

#include <sys/stat.h>

#include <filesystem>
#include <system_error>

#include "platform/host_drives.h"

namespace platform_linux {

namespace {

bool exists(const std::string& name) {
    struct stat status {};
    return ::lstat(name.c_str(), &status) == 0;
}

// Absolute, without a separator at its end; empty where the settings have none.
std::string folderOf(const std::string& letter, platform::SettingsStore& settings) {
    const std::string folder = platform::folderOfDrive(letter, settings);
    if (!folder.starts_with('/')) {
        return {};
    }
    return folder.substr(0, folder.find_last_not_of('/') + 1);
}

bool isCurrentBelow(const std::string& folder) {
    std::error_code ignored;
    const std::string below = std::filesystem::weakly_canonical(folder + "/", ignored).string();
    const std::string current = std::filesystem::current_path(ignored).string() + "/";
    return !below.empty() && current.starts_with(below);
}

}  // namespace

std::string withoutDrive(const std::string& path, platform::SettingsStore& settings) {
    const auto host = platform::splitDrive(path);
    if (!host || exists(path.substr(0, path.find_first_of(platform::hostSeparators)))) {
        return path;
    }
    const std::string folder = folderOf(host->letter, settings);
    if (host->fromRoot()) {
        return folder + host->rest;
    }
    return folder.empty() || isCurrentBelow(folder) ? host->rest : folder + "/" + host->rest;
}

}  // namespace platform_linux
