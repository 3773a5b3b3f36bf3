#include "platform/linux/linux_user_files.h"

#include <unistd.h>

#include "platform/linux/c_string.h"
#include "platform/linux/files.h"
#include "platform/linux/linux_error.h"
#include "platform/linux/user_folders.h"

namespace platform_linux {

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

void LinuxUserFiles::remove(const std::string& path) noexcept { ::unlink(path.c_str()); }

}  // namespace platform_linux
