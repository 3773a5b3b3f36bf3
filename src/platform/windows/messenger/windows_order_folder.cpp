#include "platform/windows/messenger/windows_order_folder.h"

#include <array>
#include <utility>

#include "messenger/order_names.h"
#include "platform/completion_file.h"
#include "platform/windows/file_calls.h"
#include "platform/windows/files.h"
#include "platform/windows/messenger/order_rights.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/patience.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"
#include "runtime/error.h"
#include "runtime/utf8.h"

namespace platform_windows::messenger {

namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct SearchKind {
    using Handle = HANDLE;
    static Handle none() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Handle handle) noexcept { ::FindClose(handle); }
};

ULONGLONG joined(DWORD high, DWORD low) { return ULARGE_INTEGER{{low, high}}.QuadPart; }
ULONGLONG ticks(const FILETIME& time) { return joined(time.dwHighDateTime, time.dwLowDateTime); }

std::int64_t ageInSeconds(const FILETIME& written) {
    constexpr std::int64_t second = 10'000'000;  // ticks of 100 nanoseconds
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    return static_cast<std::int64_t>(ticks(now) - ticks(written)) / second;
}

FileHandle openFolder(const std::wstring& path) {
    return FileHandle(::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, shareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// Throws what keeps the folder from being one to work in.
FolderIdentity identityOf(const FileHandle& folder, const std::string& path) {
    BY_HANDLE_FILE_INFORMATION found{};
    if (!folder || ::GetFileInformationByHandle(folder.get(), &found) == 0) {
        const DWORD error = ::GetLastError();
        throwFileError(error == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_PATH_NOT_FOUND} : error, path);
    }
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        throwFileError(ERROR_DIRECTORY, path);
    }
    return {found.dwVolumeSerialNumber, joined(found.nFileIndexHigh, found.nFileIndexLow)};
}

[[noreturn]] void refuse(const std::wstring& file, const std::string& why) {
    throw runtime::Error(runtime::errPermissionDenied, runtime::shown(shownPath(file)) + " (" + why + ")");
}

// What the call returns as its system error code, tried again while others have the file; throws what remains. Whether
// there was nothing of that name before.
template <typename Attempt>
bool makesName(const std::wstring& file, const Attempt& attempt) {
    const DWORD error = patiently(
        replacingPatience, [&](DWORD e) { return isInUse(e, file); }, attempt);
    if (error != 0 && error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS) {
        throwFileError(error, shownPath(file));
    }
    return error == 0;
}

}  // namespace

WindowsOrderFolder::WindowsOrderFolder(const std::string& path, const EventPort& port, FarFolders& farFolders,
                                       Watching watching)
    : farFolders_(farFolders), path_(nativePath(path)), shownPath_(shownPath(path_)) {
    if (shownPath_.size() > 3 && shownPath_.ends_with('\\')) {
        shownPath_.pop_back();
        path_.pop_back();
    }
    if (FarFolders::isFar(path_)) {
        farFolders_.demand(path_);
    }
    const FileHandle folder = openFolder(path_);
    identity_ = identityOf(folder, shownPath_);
    remote_ = FarFolders::isFar(path_) || FarFolders::isFar(finalPath(folder.get()));
    if (watching == Watching::yes) {
        watch_.emplace(path_, port, *this);
    }
}

std::wstring WindowsOrderFolder::native(std::wstring_view name) const {
    return (path_.ends_with(L'\\') ? path_ : path_ + L'\\') + std::wstring(name);
}

platform::OrderFolder::Holder WindowsOrderFolder::hold() {
    if (held_) {
        return Holder::ours;
    }
    const std::wstring file = native(holderName);
    held_ = FileHandle(
        ::CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                      FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!held_) {
        const DWORD error = ::GetLastError();
        if (isInUse(error, file)) {
            return Holder::another;
        }
        throwFileError(error, shownPath(file));
    }
    // It is held whether or not there is room for saying by whom.
    setSize(held_.get(), 0);
    writeFromStart(held_.get(), identityOfProcess() + "\r\n");
    return Holder::ours;
}

// Whoever holds it writes; nobody is kept from looking by that, but for who would let nobody write.
std::string WindowsOrderFolder::holder() {
    constexpr std::size_t most = 400;
    const std::wstring file = native(holderName);
    const OpenedFile opened = openFile(file, GENERIC_READ, OPEN_EXISTING);
    const bool left = static_cast<bool>(FileHandle(::CreateFileW(
        file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr)));
    std::string text(most, '\0');
    std::size_t count = 0;
    if (left || opened.error != 0 || readUpTo(opened.file.get(), text.data(), most, count) != 0) {
        return {};
    }
    text.resize(count);
    return text.substr(0, text.find_first_of("\r\n"));
}

std::vector<platform::OrderFile> WindowsOrderFolder::files() {
    if (remote_) {
        farFolders_.demand(path_);
    }
    if (identityOf(openFolder(path_), shownPath_) != identity_) {
        throwFileError(ERROR_PATH_NOT_FOUND, shownPath_, "dort liegt jetzt ein anderer Ordner");
    }
    std::vector<platform::OrderFile> files;
    WIN32_FIND_DATAW found{};
    const Owner<SearchKind> search(::FindFirstFileW(native(L"KRV*").c_str(), &found));
    for (bool more = static_cast<bool>(search); more; more = ::FindNextFileW(search.get(), &found) != 0) {
        std::string name = narrow(&found.cFileName[0]);
        if (::messenger::orderFileName(name)) {
            files.push_back({std::move(name), ageInSeconds(found.ftLastWriteTime)});
        }
    }
    if (const DWORD error = ::GetLastError(); error != ERROR_NO_MORE_FILES && error != ERROR_FILE_NOT_FOUND) {
        throwFileError(error, shownPath_);
    }
    return files;
}

// A link is opened itself, so that nothing elsewhere is read or written.
FileHandle WindowsOrderFolder::openOwn(const std::wstring& file, DWORD access) const {
    FileHandle opened;
    const DWORD error = patiently(
        replacingPatience, [&](DWORD e) { return isInUse(e, file); },
        [&] {
            opened = FileHandle(::CreateFileW(file.c_str(), access, shareAll, nullptr, OPEN_EXISTING,
                                              FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
            return opened ? 0 : ::GetLastError();
        });
    BY_HANDLE_FILE_INFORMATION found{};
    if (error != 0 || ::GetFileInformationByHandle(opened.get(), &found) == 0) {
        throwFileError(error != 0 ? error : ::GetLastError(), shownPath(file));
    }
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        refuse(file, "das ist ein Ordner statt einer Datei");
    }
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 || found.nNumberOfLinks > 1) {
        refuse(file, "das ist eine Verknüpfung mit einer anderen Datei");
    }
    return opened;
}

std::string WindowsOrderFolder::read(const std::string& name) {
    constexpr std::size_t longest = 1024 + 1;
    const std::wstring file = native(widen(name));
    const FileHandle opened = openOwn(file, GENERIC_READ);
    if (!remote_ && !ownerMayUseFolder(opened.get(), path_.c_str())) {
        refuse(file, "sie gehört jemandem, der in diesem Ordner keine Dateien anlegen darf");
    }
    std::string content(longest, '\0');
    std::size_t count = 0;
    if (const DWORD error = readUpTo(opened.get(), content.data(), longest, count); error != 0) {
        throwFileError(error, shownPath(file));
    }
    content.resize(count);
    return content;
}

bool WindowsOrderFolder::make(const std::string& name, std::string_view content) {
    const std::wstring file = native(widen(name));
    return makesName(file, [&] { return createFile(file, content); });
}

void WindowsOrderFolder::change(const std::string& name, std::string_view content) {
    const std::wstring file = native(widen(name));
    const FileHandle opened = openOwn(file, GENERIC_READ | GENERIC_WRITE);
    const std::string_view letter = content.substr(0, 1);
    const LARGE_INTEGER behind{{1, 0}};
    std::size_t written = 0;
    DWORD error = ::SetFilePointerEx(opened.get(), behind, nullptr, FILE_BEGIN) != 0 ? 0 : ::GetLastError();
    if (error == 0) {
        error = writeAll(opened.get(), content.substr(letter.size()), Where::atPosition, written);
    }
    if (error == 0) {
        error = setSize(opened.get(), static_cast<LONGLONG>(content.size()));
    }
    if (error == 0) {
        error = writeFromStart(opened.get(), letter);
    }
    if (error == 0) {
        error = flush(opened.get());
    }
    if (error != 0) {
        throwFileError(error, shownPath(file));
    }
}

bool WindowsOrderFolder::rename(const std::string& name, const std::string& newName) {
    const std::wstring file = native(widen(name));
    const std::wstring target = native(widen(newName));
    return makesName(file, [&] { return ::MoveFileExW(file.c_str(), target.c_str(), 0) != 0 ? 0 : ::GetLastError(); });
}

bool WindowsOrderFolder::remove(const std::string& name) noexcept {
    try {
        const DWORD error = removeFile(native(widen(name)));
        return error == 0 || error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    } catch (const std::exception&) {
        return false;
    }
}

std::string WindowsOrderFolder::completionMark() {
    const OpenedFile opened =
        openFile(native(widen(platform::completionFileName)), FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    BY_HANDLE_FILE_INFORMATION found{};
    if (opened.error != 0 || ::GetFileInformationByHandle(opened.file.get(), &found) == 0) {
        return {};
    }
    std::string mark;
    for (const ULONGLONG part : {joined(found.nFileIndexHigh, found.nFileIndexLow), ticks(found.ftCreationTime),
                                 ticks(found.ftLastWriteTime), sizeIn(found)}) {
        mark += std::to_string(part) + ' ';
    }
    return mark;
}

bool WindowsOrderFolder::isAt(const std::string& path) {
    try {
        return identityOf(openFolder(nativePath(path)), path) == identity_;
    } catch (const runtime::Error&) {
        return false;
    }
}

std::string identityOfProcess() {
    std::array<wchar_t, 257> user{};
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> machine{};
    DWORD userSize = user.size();
    DWORD machineSize = machine.size();
    ::GetUserNameW(user.data(), &userSize);
    ::GetComputerNameW(machine.data(), &machineSize);
    return narrow(user.data()) + " auf " + narrow(machine.data()) + ", Prozess " +
           std::to_string(::GetCurrentProcessId());
}

}  // namespace platform_windows::messenger
