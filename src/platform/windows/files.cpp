#include "platform/windows/files.h"

#include <algorithm>
#include <array>

#include "platform/windows/handle.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/system_error.h"
#include "platform/windows/unfinished_file.h"
#include "platform/windows/wide_text.h"

namespace platform_windows {

namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct Opened {
    FileHandle file;
    DWORD error = 0;
};

// With its separator.
std::wstring folderOf(const std::wstring& path) { return path.substr(0, path.find_last_of(LR"(\/)") + 1); }

bool hasAttribute(const std::wstring& path, DWORD attribute) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

Opened openFile(const std::wstring& path, DWORD access, DWORD disposition) {
    Opened result;
    if (isDevice(path)) {
        result.error = ERROR_BAD_FILE_TYPE;
        return result;
    }
    result.file =
        FileHandle(::CreateFileW(path.c_str(), access, shareAll, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!result.file) {
        const DWORD error = ::GetLastError();
        result.error = hasAttribute(path, FILE_ATTRIBUTE_DIRECTORY) ? errorDirectoryNotSupported : error;
    } else if (::GetFileType(result.file.get()) != FILE_TYPE_DISK) {
        result.error = ERROR_BAD_FILE_TYPE;
    }
    return result;
}

// Servers refuse to move very much at once.
DWORD portion(std::size_t size) {
    constexpr std::size_t most = std::size_t{16} << 20;
    return static_cast<DWORD>(std::min(size, most));
}

// Bytes read into the buffer; fewer than asked for only at the end of the file.
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

// Writes at the file's position, or always behind the end of the file.
enum class Where { atPosition, atEnd };

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

// A new file beside the one that it will replace; removed again unless it took that one's place.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::wstring& target) {
        constexpr int attempts = 3;
        for (int i = 0; i < attempts && !opened_.file; ++i) {
            path_ = folderOf(target) + unfinishedName();
            opened_ = openFile(path_, GENERIC_WRITE, CREATE_NEW);
            if (opened_.error != 0 && opened_.error != ERROR_FILE_EXISTS) {
                break;
            }
        }
        exists_ = static_cast<bool>(opened_.file);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (exists_) {
            opened_.file.reset();
            ::DeleteFileW(path_.c_str());
        }
    }

    DWORD error() const { return opened_.error; }

    DWORD write(std::string_view content, Durability durability) {
        std::size_t written = 0;
        DWORD error = writeAll(opened_.file.get(), content, Where::atPosition, written);
        const bool flush = error == 0 && durability == Durability::powerFailure;
        if (flush && ::FlushFileBuffers(opened_.file.get()) == 0) {
            error = ::GetLastError();
        }
        opened_.file.reset();
        return error;
    }

    DWORD moveTo(const std::wstring& target) {
        exists_ = ::MoveFileExW(path_.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) == 0;
        return exists_ ? ::GetLastError() : 0;
    }

    // With the attributes and rights of the target. The system may have taken the target away when it fails, so the new
    // file is moved there in any case.
    DWORD replace(const std::wstring& target) {
        exists_ = ::ReplaceFileW(target.c_str(), path_.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                                 nullptr) == 0;
        return exists_ ? moveTo(target) : 0;
    }

private:
    std::wstring path_;
    Opened opened_;
    bool exists_ = false;
};

bool isHeldOpen(DWORD error, const std::wstring& target) {
    const bool refused = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
    return refused && ::GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES &&
           !hasAttribute(target, FILE_ATTRIBUTE_DIRECTORY);
}

// Tries until nobody keeps the target open any more, for half a second.
template <typename Attempt>
DWORD whileHeldOpen(const std::wstring& target, const Attempt& attempt) {
    constexpr int attempts = 26;
    constexpr DWORD pause = 20;  // milliseconds
    DWORD error = attempt();
    for (int i = 1; i < attempts && isHeldOpen(error, target); ++i) {
        ::Sleep(pause);
        error = attempt();
    }
    return error;
}

DWORD overwrite(const std::wstring& path, std::string_view content) {
    Opened opened = openFile(path, GENERIC_WRITE, OPEN_EXISTING);
    if (opened.error != 0) {
        return opened.error;
    }
    const HANDLE file = opened.file.get();
    const LONGLONG before = sizeOf(file);
    const auto size = static_cast<LONGLONG>(content.size());
    if (size > before) {
        if (const DWORD error = setSize(file, size); error != 0) {
            setSize(file, before);
            return error;
        }
    }
    const LARGE_INTEGER start{};
    std::size_t written = 0;
    const DWORD error = ::SetFilePointerEx(file, start, nullptr, FILE_BEGIN) != 0
                            ? writeAll(file, content, Where::atPosition, written)
                            : ::GetLastError();
    return error != 0 ? error : setSize(file, size);
}

}  // namespace

DWORD readWholeFile(const std::wstring& path, std::string& content) {
    const Opened opened = openFile(path, GENERIC_READ, OPEN_EXISTING);
    if (opened.error != 0) {
        return opened.error;
    }
    const HANDLE file = opened.file.get();
    const LONGLONG size = sizeOf(file);
    if (size < 0) {
        return ::GetLastError();
    }
    if (static_cast<ULONGLONG>(size) > content.max_size()) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    std::string text(static_cast<std::size_t>(size), '\0');
    std::size_t count = 0;
    DWORD error = readUpTo(file, text.data(), text.size(), count);
    text.resize(count);

    // The file may have grown meanwhile.
    std::array<char, 4096> more;
    do {
        error = error != 0 ? error : readUpTo(file, more.data(), more.size(), count);
        if (error != 0) {
            return error;
        }
        text.append(more.data(), count);
    } while (count == more.size());
    content = std::move(text);
    return 0;
}

DWORD replaceFile(const std::wstring& path, std::string_view content, Durability durability) {
    if (isDevice(path)) {
        return ERROR_BAD_FILE_TYPE;
    }
    if (hasAttribute(path, FILE_ATTRIBUTE_DIRECTORY)) {
        return errorDirectoryNotSupported;
    }
    if (hasAttribute(path, FILE_ATTRIBUTE_READONLY)) {
        return ERROR_ACCESS_DENIED;
    }
    DWORD error = 0;
    {
        TemporaryFile file(path);
        error = file.error() != 0 ? file.error() : file.write(content, durability);
        error = error != 0 ? error : whileHeldOpen(path, [&] { return file.moveTo(path); });
    }
    removeLeftovers(folderOf(path));
    return isHeldOpen(error, path) ? overwrite(path, content) : error;
}

DWORD rewriteFile(const std::wstring& path, std::string_view content) {
    if (hasAttribute(path, FILE_ATTRIBUTE_READONLY)) {
        return ERROR_ACCESS_DENIED;
    }
    Opened old;
    const DWORD refused = whileHeldOpen(path, [&] {
        old = openFile(path, GENERIC_WRITE, OPEN_EXISTING);
        return old.error;
    });
    if (refused != 0) {
        return refused;
    }
    const std::wstring final = finalPath(old.file.get());
    const std::wstring& target = final.empty() ? path : final;
    old.file.reset();
    const DWORD attributes = ::GetFileAttributesW(target.c_str());
    TemporaryFile file(target);
    if (file.error() != 0) {
        return file.error();
    }
    DWORD error = file.write(content, Durability::powerFailure);
    error = error != 0 ? error : whileHeldOpen(target, [&] { return file.replace(target); });
    if (error == 0 && attributes != INVALID_FILE_ATTRIBUTES) {
        ::SetFileAttributesW(target.c_str(), attributes);
    }
    return error;
}

DWORD createFile(const std::wstring& path, std::string_view content) {
    Opened opened = openFile(path, GENERIC_WRITE, CREATE_NEW);
    if (opened.error != 0) {
        return opened.error == errorDirectoryNotSupported ? DWORD{ERROR_FILE_EXISTS} : opened.error;
    }
    std::size_t written = 0;
    const DWORD error = writeAll(opened.file.get(), content, Where::atPosition, written);
    opened.file.reset();
    if (error != 0) {
        ::DeleteFileW(path.c_str());
    }
    return error;
}

DWORD appendToFile(const std::wstring& path, std::string_view content) {
    const Opened opened = openFile(path, GENERIC_WRITE, OPEN_ALWAYS);
    if (opened.error != 0) {
        return opened.error;
    }
    const HANDLE file = opened.file.get();
    const LONGLONG before = sizeOf(file);
    std::size_t written = 0;
    const DWORD error = writeAll(file, content, Where::atEnd, written);
    if (error != 0 && before >= 0 && sizeOf(file) == before + static_cast<LONGLONG>(written)) {
        setSize(file, before);
    }
    return error;
}

bool isSameFile(const std::wstring& path, const std::wstring& other) {
    if (!isFile(path)) {
        return false;
    }
    const Opened one = openFile(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    const Opened two = openFile(other, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    BY_HANDLE_FILE_INFORMATION first{};
    BY_HANDLE_FILE_INFORMATION second{};
    return one.error == 0 && two.error == 0 && ::GetFileInformationByHandle(one.file.get(), &first) != 0 &&
           ::GetFileInformationByHandle(two.file.get(), &second) != 0 &&
           first.dwVolumeSerialNumber == second.dwVolumeSerialNumber && first.nFileIndexHigh == second.nFileIndexHigh &&
           first.nFileIndexLow == second.nFileIndexLow;
}

bool isFile(const std::wstring& path) {
    const DWORD attributes = isDevice(path) ? INVALID_FILE_ATTRIBUTES : ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace platform_windows
