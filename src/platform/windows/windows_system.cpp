#include "platform/windows/windows_system.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>
#include <utility>

#include "platform/windows/code_page.h"
#include "platform/windows/files.h"
#include "platform/windows/handle.h"
#include "platform/windows/host_path.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/places.h"
#include "platform/windows/screen_resolution.h"
#include "platform/windows/system_error.h"
#include "platform/windows/virtual_store.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_locale.h"
#include "platform/windows/windows_profile.h"
#include "runtime/error.h"
#include "runtime/utf8.h"

namespace platform_windows {

namespace {

void check(DWORD error, const std::wstring& path) {
    if (error != 0) {
        throwFileError(error, shownPath(path));
    }
}

// A host without a manifest in a folder of the system does not see that its files lie elsewhere.
std::string whereRedirected(const std::wstring& path) {
    const std::wstring other = redirectedFile(path);
    return other.empty() ? std::string()
                         : "Windows hat sie umgeleitet nach „" + runtime::shown(shownPath(other)) +
                               "“; das Programm, das sie schreibt, in einem eigenen Ordner außerhalb der Systemordner "
                               "betreiben";
}

// Memory that there is not is an error of the file.
template <typename Call>
void checkReading(const std::wstring& file, const Call& call) {
    DWORD error = 0;
    try {
        error = call();
    } catch (const std::bad_alloc&) {
        error = ERROR_NOT_ENOUGH_MEMORY;
    } catch (const std::length_error&) {
        error = ERROR_NOT_ENOUGH_MEMORY;
    }
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
        throwFileError(error, shownPath(file), whereRedirected(file));
    }
    check(error, file);
}

class WindowsFileReader final : public platform::FileReader {
public:
    explicit WindowsFileReader(std::wstring path) : path_(std::move(path)) {
        checkReading(path_, [this] { return openPatiently(path_, file_); });
    }
    std::uint64_t size() const override { return file_.size(); }
    bool read(std::string& to, std::size_t atMost) override {
        const std::size_t before = to.size();
        checkReading(path_, [&] {
            if (!std::exchange(begun_, true)) {
                file_.makeRoom(to);
            }
            return file_.read(to, atMost);
        });
        return to.size() > before;
    }
    bool unchanged() const override { return file_.unchanged(); }

private:
    std::wstring path_;
    ReadableFile file_;
    bool begun_ = false;
};

}  // namespace

std::wstring_view commandLineTail(std::wstring_view commandLine) {
    const bool quoted = commandLine.starts_with(L'"');
    const std::size_t end = quoted ? commandLine.find(L'"', 1) : commandLine.find_first_of(L" \t");
    if (end == std::wstring_view::npos) {
        return {};
    }
    return commandLine.substr(quoted ? end + 1 : end);
}

std::string WindowsSystem::commandTail() { return narrow(commandLineTail(::GetCommandLineW())); }

std::string WindowsSystem::programDirectory() {
    const std::string file = shownPath(programFile());
    const std::size_t separator = file.rfind('\\');
    if (separator == std::string::npos) {
        return {};
    }
    const bool root = separator > 0 && file[separator - 1] == ':';
    return file.substr(0, root ? separator + 1 : separator);
}

std::string WindowsSystem::programFileName() {
    const std::string file = shownPath(programFile());
    return file.substr(file.rfind('\\') + 1);
}

std::string WindowsSystem::currentDirectory() {
    std::wstring folder(::GetCurrentDirectoryW(0, nullptr), L'\0');
    const DWORD length = ::GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
    if (length == 0 || length >= folder.size()) {
        throwFileError(length == 0 ? ::GetLastError() : DWORD{ERROR_PATH_NOT_FOUND}, ".");
    }
    folder.resize(length);
    return shownPath(folder);
}

void WindowsSystem::changeDirectory(const std::string& folder) {
    if (::SetCurrentDirectoryW(widen(folder).c_str()) == 0) {
        const DWORD error = ::GetLastError();
        const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_DIRECTORY || error == ERROR_INVALID_NAME;
        throwFileError(missing ? DWORD{ERROR_PATH_NOT_FOUND} : error, folder);
    }
}

std::string WindowsSystem::userName() {
    constexpr DWORD longest = 257;  // with the end
    std::array<wchar_t, longest> name{};
    DWORD size = longest;
    return ::GetUserNameW(name.data(), &size) != 0 ? narrow(name.data()) : std::string();
}

std::wstring WindowsSystem::native(const std::string& path) const {
    return nativePath(starter_.isThere() ? outerPath(path) : path);
}

std::string WindowsSystem::readFile(const std::string& path) {
    const std::wstring file = native(path);
    std::string content;
    checkReading(file, [&] { return readWholeFile(file, content); });
    return content;
}

std::unique_ptr<platform::FileReader> WindowsSystem::openToRead(const std::string& path) {
    return std::make_unique<WindowsFileReader>(native(path));
}

std::uint64_t WindowsSystem::fileSize(const std::string& path) {
    try {
        constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        const FileHandle file(::CreateFileW(native(path).c_str(), FILE_READ_ATTRIBUTES, shareAll, nullptr,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        LARGE_INTEGER size{};
        return file && ::GetFileSizeEx(file.get(), &size) != 0 ? static_cast<std::uint64_t>(size.QuadPart) : 0;
    } catch (const runtime::Error&) {
        return 0;
    }
}

void WindowsSystem::writeFile(const std::string& path, std::string_view content) {
    const std::wstring file = native(path);
    check(replaceFile(file, content), file);
}

void WindowsSystem::rewriteFile(const std::string& path, std::string_view content) {
    const std::wstring file = native(path);
    check(platform_windows::rewriteFile(file, content), file);
}

void WindowsSystem::appendFile(const std::string& path, std::string_view content) {
    const std::wstring file = native(path);
    check(appendToFile(file, content), file);
}

std::unique_ptr<platform::Profile> WindowsSystem::openProfile(const std::string& path) {
    // An empty path would be the system's own file.
    std::wstring file;
    try {
        file = native(path);
    } catch (const runtime::Error&) {
        file = L"nul";
    }
    return std::make_unique<WindowsProfile>(std::move(file));
}

bool WindowsSystem::fileExists(const std::string& path) {
    try {
        return isFile(native(path));
    } catch (const runtime::Error&) {
        return false;
    }
}

void WindowsSystem::removeFile(const std::string& path) {
    const std::wstring file = native(path);
    if (::DeleteFileW(file.c_str()) == 0 && isFile(file)) {
        throwFileError(::GetLastError(), shownPath(file));
    }
}

bool WindowsSystem::wouldReplace(const std::string& written, const std::string& path) {
    try {
        return isSameFile(native(written), native(path));
    } catch (const runtime::Error&) {
        return false;
    }
}

std::string WindowsSystem::fileNamed(const std::string& name) {
    // The system has read the bytes in its own code page, and gives them back.
    const std::string bytes = encode(widen(name), CP_ACP);
    for (const unsigned codePage : {unsigned{CP_UTF8}, dosCodePage()}) {
        if (fileExists(name)) {
            break;
        }
        if (std::string other = narrow(decode(bytes, codePage, 0)); fileExists(other)) {
            return other;
        }
    }
    return name;
}

runtime::DateTime WindowsSystem::localTime() {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    return {.year = now.wYear,
            .month = now.wMonth,
            .day = now.wDay,
            .hour = now.wHour,
            .minute = now.wMinute,
            .second = now.wSecond,
            .millisecond = now.wMilliseconds};
}

const runtime::Locale& WindowsSystem::locale() {
    if (!locale_) {
        locale_ = userLocale();
    }
    return *locale_;
}

std::string WindowsSystem::toSystemCodePage(std::string_view text) { return encode(widen(text), CP_ACP); }

std::string WindowsSystem::fromDosCodePage(std::string_view bytes) {
    std::wstring text = decode(bytes, dosCodePage(), MB_USEGLYPHCHARS);
    std::replace(text.begin(), text.end(), L'\0', L' ');
    return narrow(text);
}

int WindowsSystem::screenDpiX() { return screenResolution(LOGPIXELSX); }

int WindowsSystem::screenDpiY() { return screenResolution(LOGPIXELSY); }

void WindowsSystem::sleep(int milliseconds) {
    if (milliseconds > 0) {
        ::Sleep(static_cast<DWORD>(milliseconds));
    }
}

std::int64_t WindowsSystem::elapsedMilliseconds() { return static_cast<std::int64_t>(evenMilliseconds()); }

std::string WindowsSystem::shellCommand(const std::string& folder, const std::vector<std::string>& arguments) {
    const auto inQuotes = [](const std::string& text) { return '"' + text + '"'; };
    std::string command = "cd /d " + inQuotes(folder) + " && " + inQuotes(shownPath(programFile()));
    for (const std::string& argument : arguments) {
        command += ' ' + inQuotes(argument);
    }
    return command;
}

}  // namespace platform_windows
