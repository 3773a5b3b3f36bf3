#include "platform/windows/windows_user_files.h"

#include <windows.h>

#include <algorithm>
#include <exception>
#include <tuple>

#include "platform/windows/file_owner.h"
#include "platform/windows/files.h"
#include "platform/windows/handle.h"
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

struct SearchKind {
    using Handle = HANDLE;
    static Handle none() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Handle handle) noexcept { ::FindClose(handle); }
};

struct FoundFile {
    ULONGLONG changed;
    std::wstring name;
};

// Files of whoever they are.
std::vector<FoundFile> filesIn(const std::wstring& folder) {
    constexpr DWORD others = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    std::vector<FoundFile> files;
    WIN32_FIND_DATAW file{};
    const Owner<SearchKind> search(::FindFirstFileW((folder + L'*').c_str(), &file));
    for (bool found = bool(search); found; found = ::FindNextFileW(search.get(), &file) != 0) {
        if ((file.dwFileAttributes & others) == 0) {
            const FILETIME& time = file.ftLastWriteTime;
            files.push_back({ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart, file.cFileName});
        }
    }
    return files;
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

std::vector<std::string> WindowsUserFiles::names(const std::string& folder) {
    const std::wstring path = nativePath(folder);
    std::vector<FoundFile> files = filesIn(path);
    std::sort(files.begin(), files.end(), [](const FoundFile& left, const FoundFile& right) {
        return std::tie(left.changed, left.name) > std::tie(right.changed, right.name);
    });
    std::vector<std::string> names;
    for (const FoundFile& file : files) {
        if (isUsersOwn(path + file.name)) {
            names.push_back(narrow(file.name));
        }
    }
    return names;
}

std::string WindowsUserFiles::read(const std::string& path) {
    const std::wstring file = nativePath(path);
    std::string content;
    if (const DWORD error = readWholeFile(file, content); error != 0) {
        throwFileError(error, shownPath(file));
    }
    return content;
}

void WindowsUserFiles::remove(const std::string& path) noexcept {
    try {
        removeFile(nativePath(path));
    } catch (const std::exception&) {
        return;
    }
}

}  // namespace platform_windows
