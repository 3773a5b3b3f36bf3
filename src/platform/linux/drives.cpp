#include "platform/linux/drives.h"

#include <sys/stat.h>

#include <filesystem>
#include <string_view>
#include <system_error>
#include <variant>

namespace platform_linux {

namespace {

constexpr std::string_view separators = "\\/";

bool hasDrive(std::string_view path) {
    const bool letter = !path.empty() && ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
    return letter && path.size() > 2 && path[1] == ':';
}

bool exists(const std::string& name) {
    struct stat status {};
    return ::lstat(name.c_str(), &status) == 0;
}

// Absolute, without a separator at its end; empty where the settings have none.
std::string folderOfDrive(std::string_view letter, platform::SettingsStore& settings) {
    const auto value =
        settings.value(platform::SettingsRoot::currentUser, R"(Software\Velmora\KRVWinPr\3.0\Laufwerke)", letter);
    const auto* folder = value ? std::get_if<std::string>(&*value) : nullptr;
    if (folder == nullptr || !folder->starts_with('/')) {
        return {};
    }
    return folder->substr(0, folder->find_last_not_of('/') + 1);
}

bool isCurrentBelow(const std::string& folder) {
    std::error_code ignored;
    const std::string below = std::filesystem::weakly_canonical(folder + "/", ignored).string();
    const std::string current = std::filesystem::current_path(ignored).string() + "/";
    return !below.empty() && current.starts_with(below);
}

}  // namespace

std::string withoutDrive(const std::string& path, platform::SettingsStore& settings) {
    if (!hasDrive(path) || exists(path.substr(0, path.find_first_of(separators)))) {
        return path;
    }
    std::string rest = path.substr(2);
    const std::string folder = folderOfDrive(path.substr(0, 1), settings);
    if (separators.find(rest.front()) != std::string_view::npos) {
        return folder + rest;
    }
    return folder.empty() || isCurrentBelow(folder) ? rest : folder + "/" + rest;
}

}  // namespace platform_linux
