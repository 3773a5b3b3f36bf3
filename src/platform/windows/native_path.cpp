// Paths of the port and of the system: nativePath() and its like of files.h.
#include "platform/windows/files.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"

namespace platform_windows {

namespace {

// What begins a path of any length, and one on a server.
constexpr std::wstring_view longPath = LR"(\\?\)";
constexpr std::wstring_view longShare = LR"(\\?\UNC\)";

}  // namespace

bool isDevice(const std::wstring& path) { return path.starts_with(LR"(\\.\)"); }

std::wstring nativePath(const std::string& path) {
    std::wstring given = widen(path);
    if (given.empty() || given.find(L'\0') != std::wstring::npos) {
        throwFileError(ERROR_INVALID_NAME, path.substr(0, path.find('\0')));
    }
    if (given.starts_with(longPath)) {
        return given;
    }
    std::wstring whole(MAX_PATH, L'\0');
    DWORD length = ::GetFullPathNameW(given.c_str(), MAX_PATH, whole.data(), nullptr);
    if (length >= MAX_PATH) {
        whole.resize(length);
        length = ::GetFullPathNameW(given.c_str(), length, whole.data(), nullptr);
    }
    if (length == 0) {
        throwFileError(::GetLastError(), path);
    }
    whole.resize(length);
    // Short enough for the temporary file beside it, too.
    constexpr std::size_t longest = MAX_PATH - 40;
    if (whole.size() <= longest || isDevice(whole)) {
        return whole;
    }
    return whole.starts_with(LR"(\\)") ? std::wstring(longShare) + whole.substr(2) : std::wstring(longPath) + whole;
}

std::string shownPath(std::wstring_view path) {
    if (path.starts_with(longShare)) {
        return R"(\\)" + narrow(path.substr(longShare.size()));
    }
    return narrow(path.starts_with(longPath) ? path.substr(longPath.size()) : path);
}

}  // namespace platform_windows
