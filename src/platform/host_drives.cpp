#include "platform/host_drives.h"

#include <variant>

namespace platform {

std::optional<HostPath> splitDrive(std::string_view path) {
    const bool letter = !path.empty() && ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
    if (!letter || path.size() <= 2 || path[1] != ':') {
        return std::nullopt;
    }
    return HostPath{std::string(path.substr(0, 1)), std::string(path.substr(2))};
}

std::string folderOfDrive(const std::string& letter, SettingsStore& settings) {
    const auto value = settings.value(SettingsRoot::currentUser, R"(Software\Velmora\KRVWinPr\3.0\Laufwerke)", letter);
    const auto* folder = value ? std::get_if<std::string>(&*value) : nullptr;
    return folder != nullptr ? *folder : std::string();
}

}  // namespace platform
