#include "platform/linux/linux_user_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <tuple>

#include "platform/linux/c_string.h"
#include "platform/linux/files.h"
#include "platform/linux/linux_error.h"
#include "platform/linux/user_folders.h"

namespace platform_linux {

namespace {

struct FolderCloser {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

}  // namespace

std::vector<std::string> LinuxUserFiles::folders(const std::string& name) {
    std::vector<std::string> result;
    const std::string data = userFolder("XDG_DATA_HOME", ".local/share");
    const CString here(::getcwd(nullptr, 0));
    for (const std::string& place : {data, std::string(here ? here.get() : "")}) {
        if (!place.empty()) {
            result.push_back(place);
            result.back().append("/").append(name).append("/");
        }
    }
    return result;
}

void LinuxUserFiles::create(const std::string& path, std::string_view content) {
    makePrivateFolders(path);
    const int error = createFile(path, content, privateFile);
    if (error != 0) {
        ::rmdir(path.substr(0, path.rfind('/')).c_str());
        throwFileError(error, path);
    }
}

void LinuxUserFiles::replace(const std::string& path, std::string_view content) {
    makePrivateFolders(path);
    const Replacement how{.mode = privateFile, .exactMode = true, .durable = true};
    if (const int error = replaceFile(path, content, how); error != 0) {
        throwFileError(error, path);
    }
}

std::vector<std::string> LinuxUserFiles::names(const std::string& folder) {
    using Found = std::tuple<time_t, long, std::string>;
    std::vector<Found> found;
    const std::unique_ptr<DIR, FolderCloser> opened(::opendir(folder.c_str()));
    for (const dirent* entry = nullptr; opened && (entry = ::readdir(opened.get())) != nullptr;) {
        struct stat file {};
        if (::fstatat(::dirfd(opened.get()), entry->d_name, &file, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(file.st_mode) &&
            file.st_uid == ::geteuid()) {
            found.emplace_back(file.st_mtim.tv_sec, file.st_mtim.tv_nsec, entry->d_name);
        }
    }
    std::sort(found.begin(), found.end(), std::greater<>());
    std::vector<std::string> names;
    names.reserve(found.size());
    for (Found& file : found) {
        names.push_back(std::move(std::get<std::string>(file)));
    }
    return names;
}

std::string LinuxUserFiles::read(const std::string& path) {
    std::string content;
    if (const int error = readWholeFile(path, content); error != 0) {
        throwFileError(error, path);
    }
    return content;
}

void LinuxUserFiles::remove(const std::string& path) noexcept { ::unlink(path.c_str()); }

}  // namespace platform_linux
