#include "platform/windows/file_calls.h"

#include <winternl.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "platform/windows/files.h"
#include "platform/windows/system_error.h"

namespace platform_windows {

namespace {

// Servers refuse to move very much at once.
DWORD portion(std::size_t size) {
    constexpr std::size_t most = std::size_t{16} << 20;
    return static_cast<DWORD>(std::min(size, most));
}

// The kernel's own function, because the one that wraps it came with Windows Vista.
DWORD setInformation(HANDLE file, FILE_INFORMATION_CLASS kind, void* information, std::size_t size) {
    IO_STATUS_BLOCK block{};
    const NTSTATUS status = ::NtSetInformationFile(file, &block, information, static_cast<ULONG>(size), kind);
    return NT_SUCCESS(status) ? 0 : ::RtlNtStatusToDosError(status);
}

}  // namespace

KernelName kernelName(std::wstring_view path) noexcept {
    constexpr std::wstring_view longPath = LR"(\\?\)";
    constexpr std::wstring_view share = LR"(\\)";
    if (path.starts_with(longPath)) {
        return {LR"(\??\)", path.substr(longPath.size())};
    }
    return path.starts_with(share) ? KernelName{LR"(\??\UNC\)", path.substr(share.size())}
                                   : KernelName{LR"(\??\)", path};
}

OpenedFile openFile(const std::wstring& path, DWORD access, DWORD disposition) {
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    OpenedFile result;
    if (isDevice(path)) {
        result.error = ERROR_BAD_FILE_TYPE;
        return result;
    }
    result.file =
        FileHandle(::CreateFileW(path.c_str(), access, shareAll, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!result.file) {
        const DWORD error = ::GetLastError();
        result.error = hasAttribute(path, FILE_ATTRIBUTE_DIRECTORY) ? errorDirectoryNotSupported : error;
    } else if (const DWORD type = ::GetFileType(result.file.get()); type != FILE_TYPE_DISK) {
        const DWORD error = type == FILE_TYPE_UNKNOWN ? ::GetLastError() : 0;
        result.error = error != 0 ? error : DWORD{ERROR_BAD_FILE_TYPE};
    }
    return result;
}

bool hasAttribute(const std::wstring& path, DWORD attribute) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

std::wstring folderOf(const std::wstring& path) { return path.substr(0, path.find_last_of(LR"(\/)") + 1); }

DWORD readUpTo(HANDLE file, char* to, std::size_t size, std::size_t& done) {
    done = 0;
    while (done < size) {
        DWORD count = 0;
        if (::ReadFile(file, to + done, portion(size - done), &count, nullptr) == 0) {
            return ::GetLastError();
        }
        if (count == 0) {
            break;
        }
        done += count;
    }
    return 0;
}

DWORD writeAll(HANDLE file, std::string_view content, Where where, std::size_t& written) {
    constexpr DWORD endOfFile = 0xFFFFFFFF;
    written = 0;
    while (written < content.size()) {
        OVERLAPPED end{};
        end.Offset = endOfFile;
        end.OffsetHigh = endOfFile;
        DWORD count = 0;
        if (::WriteFile(file, content.data() + written, portion(content.size() - written), &count,
                        where == Where::atEnd ? &end : nullptr) == 0) {
            return ::GetLastError();
        }
        if (count == 0) {
            return ERROR_HANDLE_DISK_FULL;
        }
        written += count;
    }
    return 0;
}

DWORD writeFromStart(HANDLE file, std::string_view content) {
    const LARGE_INTEGER start{};
    std::size_t written = 0;
    return ::SetFilePointerEx(file, start, nullptr, FILE_BEGIN) != 0
               ? writeAll(file, content, Where::atPosition, written)
               : ::GetLastError();
}

LONGLONG sizeOf(HANDLE file) {
    LARGE_INTEGER size{};
    return ::GetFileSizeEx(file, &size) != 0 ? size.QuadPart : -1;
}

DWORD setSize(HANDLE file, LONGLONG size) {
    LARGE_INTEGER position{};
    position.QuadPart = size;
    const bool set = ::SetFilePointerEx(file, position, nullptr, FILE_BEGIN) != 0 && ::SetEndOfFile(file) != 0;
    return set ? 0 : ::GetLastError();
}

DWORD flush(HANDLE file) { return ::FlushFileBuffers(file) != 0 ? 0 : ::GetLastError(); }

DWORD setDeletion(HANDLE file, bool whenClosed) {
    FILE_DISPOSITION_INFORMATION information{};
    information.DoDeleteFile = whenClosed ? 1 : 0;
    return setInformation(file, FileDispositionInformation, &information, sizeof(information));
}

DWORD renameFile(HANDLE file, std::wstring_view kernelPath, std::span<unsigned char> room) noexcept {
    const std::size_t length = kernelPath.size() * sizeof(wchar_t);
    if (room.size() < sizeof(FILE_RENAME_INFORMATION) + length) {
        return ERROR_FILENAME_EXCED_RANGE;
    }
    auto* information = reinterpret_cast<FILE_RENAME_INFORMATION*>(room.data());
    information->ReplaceIfExists = 1;
    information->RootDirectory = nullptr;
    information->FileNameLength = static_cast<ULONG>(length);
    std::memcpy(&information->FileName[0], kernelPath.data(), length);
    return setInformation(file, FileRenameInformation, room.data(), room.size());
}

DWORD renameFile(HANDLE file, const std::wstring& path) {
    const KernelName kernel = kernelName(path);
    const std::wstring whole = std::wstring(kernel.prefix).append(kernel.rest);
    std::vector<unsigned char> room(sizeof(FILE_RENAME_INFORMATION) + whole.size() * sizeof(wchar_t));
    return renameFile(file, whole, room);
}

}  // namespace platform_windows
