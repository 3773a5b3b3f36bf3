#include "platform/windows/windows_user_files.h"

#include <windows.h>

#include <algorithm>
#include <exception>

#include "platform/windows/files.h"
#include "platform/windows/places.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"
#include "runtime/program.h"

namespace platform_windows {

namespace {

// Why the folder of a file could not be made; 0 where it was, or is there.
DWORD makeFolders(const std::wstring& path) {
    const std::wstring folder = path.substr(0, std::min(path.find_last_of(L'\\'), path.size()));
    if (folder == path || ::GetFileAttributesW(folder.c_str()) != INVALID_FILE_ATTRIBUTES) {
        return 0;
    }
    const DWORD above = makeFolders(folder);
    const DWORD error = ::CreateDirectoryW(folder.c_str(), nullptr) != 0 ? 0 : ::GetLastError();
    return error == ERROR_PATH_NOT_FOUND && above != 0 ? above : error;
}

// The folder may be there all the same, although its user must not look at it.
template <typename Write>
DWORD withFolders(const std::wstring& path, const Write& write) {
    const DWORD folders = makeFolders(path);
    const DWORD error = write();
    return error == ERROR_PATH_NOT_FOUND && folders != 0 ? folders : error;
}

}  // namespace

std::vector<std::string> WindowsUserFiles::folders(const std::string& name) {
    std::vector<std::string> result;
    if (const std::wstring data = localData(); !data.empty()) {
        result.push_back(narrow(data) + "\\" + runtime::programName + "\\" + name + "\\");
    }
    result.push_back(shownPath(nativePath(name)) + "\\");
    return result;
}

void WindowsUserFiles::create(const std::string& path, std::string_view content) {
    const std::wstring file = nativePath(path);
    const DWORD error = withFolders(file, [&] { return createFile(file, content); });
    if (error != 0) {
        ::RemoveDirectoryW(file.substr(0, file.find_last_of(L'\\')).c_str());
        throwFileError(error, shownPath(file));
    }
}

void WindowsUserFiles::replace(const std::string& path, std::string_view content) {
    const std::wstring file = nativePath(path);
    const DWORD error = withFolders(file, [&] { return replaceFile(file, content, Durability::powerFailure); });
    if (error != 0) {
        throwFileError(error, shownPath(file));
    }
}

void WindowsUserFiles::remove(const std::string& path) noexcept {
    try {
        removeFile(nativePath(path));
    } catch (const std::exception&) {
        return;
    }
}

}  // namespace platform_windows
