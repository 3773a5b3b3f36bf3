#include "platform/linux/user_folders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/linux/file_calls.h"
#include "runtime/program.h"

namespace platform_linux {

namespace {

std::string homeFolder() {
    if (const char* home = ::getenv("HOME"); home != nullptr && *home == '/') {
        return home;
    }
    const passwd* user = ::getpwuid(::geteuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
}

}  // namespace

std::string userFolder(const char* variable, const std::string& belowHome) {
    std::string folder;
    if (const char* configured = ::getenv(variable); configured != nullptr && *configured == '/') {
        folder = configured;
    } else if (const std::string home = homeFolder(); home.starts_with('/') && home != "/") {
        folder = home + "/" + belowHome;
    }
    return folder.empty() ? folder : folder + "/" + runtime::programName;
}

void makePrivateFolders(const std::string& path) {
    constexpr mode_t privateFolder = 0700;
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
        const std::string folder = path.substr(0, end);
        if (::mkdir(folder.c_str(), privateFolder) == 0) {
            giveToOwnerOf(folderOf(folder), openFile(folder, O_RDONLY | O_DIRECTORY | O_NOFOLLOW).get());
        }
    }
}

}  // namespace platform_linux
