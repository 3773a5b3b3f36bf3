#include "platform/windows/windows_user_files.h"

#include <windows.h>

#include <exception>

#include "platform/windows/files.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"
#include "runtime/program.h"

namespace platform_windows {

namespace {

// Where a folder cannot be made, the file that is to lie in it cannot either.
void makeFolders(const std::wstring& path) {
    const std::size_t separator = path.find_last_of(L'\\');
    if (separator == std::wstring::npos) {
        return;
    }
    const std::wstring folder = path.substr(0, separator);
    if (::GetFileAttributesW(folder.c_str()) == INVALID_FILE_ATTRIBUTES) {
        makeFolders(folder);
        ::CreateDirectoryW(folder.c_str(), nullptr);
    }
}

}  // namespace

std::vector<std::string> WindowsUserFiles::folders(const std::string& name) {
    constexpr const wchar_t* variable = L"LOCALAPPDATA";
    std::wstring data(::GetEnvironmentVariableW(variable, nullptr, 0), L'\0');
    data.resize(::GetEnvironmentVariableW(variable, data.data(), static_cast<DWORD>(data.size())));
    std::vector<std::string> result;
    if (!data.empty()) {
        result.push_back(narrow(data) + "\\" + runtime::programName + "\\" + name + "\\");
    }
    result.push_back(shownPath(nativePath(name)) + "\\");
    return result;
}

void WindowsUserFiles::create(const std::string& path, std::string_view content) {
    const std::wstring file = nativePath(path);
    makeFolders(file);
    const DWORD error = createFile(file, content);
    if (error != 0) {
        ::RemoveDirectoryW(file.substr(0, file.find_last_of(L'\\')).c_str());
        throwFileError(error, shownPath(file));
    }
}

void WindowsUserFiles::replace(const std::string& path, std::string_view content) {
    const std::wstring file = nativePath(path);
    makeFolders(file);
    if (const DWORD error = replaceFile(file, content, Durability::powerFailure); error != 0) {
        throwFileError(error, shownPath(file));
    }
}

void WindowsUserFiles::remove(const std::string& path) noexcept {
    try {
        ::DeleteFileW(nativePath(path).c_str());
    } catch (const std::exception&) {
        return;
    }
}

}  // namespace platform_windows
