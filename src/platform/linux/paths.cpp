#include "platform/linux/paths.h"

#include <dirent.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <memory>

#include "platform/linux/code_page.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace platform_linux {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

// errno value; a file that exists but may not be reached is left for the one who opens it to find out.
int lookUp(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) {
        return 0;
    }
    return errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG ? errno : 0;
}

// Whether a name is the wanted one, which is in capitals. An emulator of DOS may have written it in the host's bytes;
// umlauts are the same in all western code pages of DOS.
bool isName(std::string_view candidate, const std::string& wanted) {
    constexpr int codePage = 850;
    // No letter takes more bytes in the other case, and all but ASCII more of them in UTF-8.
    if (candidate.size() >= wanted.size()) {
        return candidate.size() == wanted.size() && runtime::upperCase(candidate) == wanted;
    }
    return !runtime::isUtf8(candidate) && runtime::upperCase(textOf(candidate, dosCodePage(codePage))) == wanted;
}

// The first name in the folder that equals the given one but for the case of letters; empty where there is none.
std::string anyCase(const std::string& folder, std::string_view name) {
    const std::unique_ptr<DIR, CloseFolder> directory(::opendir(folder.empty() ? "." : folder.c_str()));
    if (!directory) {
        return {};
    }
    const std::string wanted = runtime::upperCase(name);
    std::string found;
    while (const dirent* entry = ::readdir(directory.get())) {
        const std::string_view candidate = static_cast<const char*>(entry->d_name);
        if ((found.empty() || candidate < found) && isName(candidate, wanted)) {
            found = candidate;
        }
    }
    return found;
}

ResolvedPath search(std::string_view path) {
    std::string result = path.starts_with('/') ? "/" : "";
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (part.empty()) {
            continue;
        }
        std::string next = result + std::string(part);
        if (const int error = lookUp(next); error == ENAMETOOLONG) {
            return {next, error};
        } else if (error != 0) {
            const std::string found = anyCase(result, part);
            if (found.empty()) {
                return {next + (path.empty() ? "" : "/") + std::string(path), path.empty() ? ENOENT : ENOTDIR};
            }
            next = result + found;
        }
        result = next + (path.empty() ? "" : "/");
    }
    const int error = lookUp(result);
    return {result, error};
}

// With "/" as the separator; empty for what can be no path.
std::string native(std::string_view path) {
    if (path.find('\0') != std::string_view::npos) {
        return {};
    }
    std::string result(path);
    std::replace(result.begin(), result.end(), '\\', '/');
    return result;
}

}  // namespace

ResolvedPath findPath(std::string_view path) {
    std::string exact = native(path);
    if (exact.empty()) {
        return {std::string(path), EINVAL};
    }
    if (lookUp(exact) == 0) {
        return {std::move(exact), 0};
    }
    return search(exact);
}

ResolvedPath findFolderOf(std::string_view path) {
    const std::string exact = native(path);
    if (exact.empty()) {
        return {std::string(path), EINVAL};
    }
    const std::size_t nameAt = exact.rfind('/') + 1;  // 0 where there is no folder
    const std::string name = exact.substr(nameAt);
    if (name.empty() || name == "." || name == "..") {
        return {exact, EISDIR};
    }
    if (nameAt <= 1) {
        return {exact, 0};
    }
    ResolvedPath folder = findPath(exact.substr(0, nameAt));
    if (folder.error != 0) {
        return {exact, folder.error == ENOENT ? ENOTDIR : folder.error};
    }
    if (!folder.path.ends_with('/')) {
        folder.path += '/';
    }
    return {folder.path + name, 0};
}

ResolvedPath findFileToReplace(std::string_view path) {
    ResolvedPath file = findFolderOf(path);
    if (file.error == 0 && lookUp(file.path) == ENOENT) {
        const std::size_t nameAt = file.path.rfind('/') + 1;
        const std::string found = anyCase(file.path.substr(0, nameAt), file.path.substr(nameAt));
        file.path.replace(nameAt, std::string::npos, found.empty() ? file.path.substr(nameAt) : found);
    }
    return file;
}

std::string programFile() {
    std::array<char, PATH_MAX> buffer;
    const ssize_t length = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
    if (length <= 0) {
        // Without /proc, what the program was started as; a relative path may mean another file by now.
        // The kernel hands it over as a number. NOLINTNEXTLINE(performance-no-int-to-ptr)
        const char* started = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
        return started != nullptr && *started == '/' ? started : std::string();
    }
    std::string file(buffer.data(), static_cast<std::size_t>(length));
    // The file may have been replaced by a newer one since the program was started.
    constexpr std::string_view replaced = " (deleted)";
    if (file.ends_with(replaced) && lookUp(file) != 0) {
        file.resize(file.size() - replaced.size());
    }
    return file;
}

}  // namespace platform_linux
