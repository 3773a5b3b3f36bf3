#include "platform/windows/host_path.h"

#include "platform/host_drives.h"
#include "platform/windows/file_calls.h"
#include "platform/windows/files.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/windows_settings_store.h"

namespace platform_windows {

namespace {

// Both with a separator at the end, or a file's.
bool isBelow(const std::wstring& path, const std::wstring& folder) {
    return path.size() >= folder.size() && isSameName(std::wstring_view(path).substr(0, folder.size()), folder);
}

}  // namespace

std::string outerPath(const std::string& path) {
    WindowsSettingsStore settings;
    const auto host = platform::splitDrive(path);
    const std::string folder = host ? platform::folderOfDrive(host->letter, settings) : std::string();
    if (folder.empty()) {
        return path;
    }
    const std::wstring here = folderOf(nativePath(R"(.\x)"));
    if (isBelow(nativePath(path), here)) {
        return path;
    }
    const bool fromHere = !host->fromRoot() && isBelow(here, folderOf(nativePath(folder + R"(\x)")));
    std::string outer = fromHere ? host->rest : folder + '\\' + host->rest;
    return hasAttribute(folderOf(nativePath(outer)), FILE_ATTRIBUTE_DIRECTORY) ? outer : path;
}

}  // namespace platform_windows
