#include "platform/windows/unfinished_file.h"

#include <array>
#include <atomic>
#include <random>

#include "platform/windows/files.h"
#include "platform/windows/patience.h"

namespace platform_windows {

namespace {

struct SearchKind {
    using Handle = HANDLE;
    static Handle none() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Handle handle) noexcept { ::FindClose(handle); }
};

// The open files of this kind; where there are more at a time, some remain after a crash until somebody clears them up.
constexpr std::size_t mostKnown = 8;
constinit std::array<std::atomic<HANDLE>, mostKnown> known{};

void change(HANDLE from, HANDLE to) noexcept {
    for (std::atomic<HANDLE>& place : known) {
        if (HANDLE expected = from; place.compare_exchange_strong(expected, to)) {
            return;
        }
    }
}

void know(const OpenedFile& opened) noexcept {
    if (opened.error == 0) {
        change(nullptr, opened.file.get());
    }
}
void forget(const OpenedFile& opened) noexcept {
    if (opened.error == 0 && opened.file) {
        change(opened.file.get(), nullptr);
    }
}

ULONGLONG ticks(const FILETIME& time) { return ULONGLONG{time.dwHighDateTime} << 32U | time.dwLowDateTime; }

bool isOld(const WIN32_FIND_DATAW& found) {
    constexpr ULONGLONG old = 6ULL * 60 * 60 * 10'000'000;  // hours in ticks of 100 nanoseconds
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    return ticks(found.ftLastWriteTime) + old < ticks(now);
}

std::wstring unfinishedName() {
    constexpr std::wstring_view letters = L"abcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device source;
    std::uniform_int_distribution<std::size_t> choice(0, letters.size() - 1);
    std::wstring name = L"krvwinpr-";
    for (int i = 0; i < 16; ++i) {
        name += letters[choice(source)];
    }
    return name + L".tmp";
}

}  // namespace

UnfinishedFile::UnfinishedFile(const std::wstring& target) {
    writing_.error = ERROR_FILE_EXISTS;
    constexpr int attempts = 3;
    for (int i = 0; i < attempts && writing_.error == ERROR_FILE_EXISTS; ++i) {
        path_ = folderOf(target) + unfinishedName();
        writing_ = openFile(path_, GENERIC_WRITE | DELETE, CREATE_NEW);
    }
    if (writing_.error != 0) {
        return;
    }
    moving_ = openFile(path_, DELETE, OPEN_EXISTING);
    if (moving_.error != 0) {
        // Whoever makes a file gets the access that he asks for, what he may not do with one that is there included.
        setDeletion(writing_.file.get(), true);
    }
    know(moving_);
}

UnfinishedFile::~UnfinishedFile() {
    forget(moving_);
    if (moving_.file && setDeletion(moving_.file.get(), true) != 0) {
        moving_.file.reset();
        ::DeleteFileW(path_.c_str());
    }
}

DWORD UnfinishedFile::write(std::string_view content, Durability durability) {
    DWORD error = writeFromStart(writing_.file.get(), content);
    if (error == 0 && durability == Durability::powerFailure) {
        error = flush(writing_.file.get());
    }
    writing_.file.reset();
    return error;
}

DWORD UnfinishedFile::moveTo(const std::wstring& target) {
    forget(moving_);  // a crash may not take the target with it
    const DWORD error = renameFile(moving_.file.get(), target);
    if (error == 0) {
        moving_.file.reset();
    } else {
        know(moving_);
    }
    return error;
}

DWORD UnfinishedFile::replace(const std::wstring& target) {
    const std::wstring aside = target + L".krvwinpr-alt";
    forget(moving_);
    moving_.file.reset();  // the system wants to have the file for itself
    if (::ReplaceFileW(target.c_str(), path_.c_str(), aside.c_str(), REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                       nullptr) == 0) {
        const DWORD error = ::GetLastError();
        moving_ = openFile(path_, DELETE, OPEN_EXISTING);
        know(moving_);
        // A server may let nobody pass rights on; then the file gets those of a new one.
        const bool waits = mayBeInUse(error) && error != ERROR_ACCESS_DENIED;
        if (waits && ::GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES) {
            return error;
        }
        const DWORD result = moving_.error != 0 ? moving_.error : moveTo(target);
        if (result != 0) {
            ::MoveFileExW(aside.c_str(), target.c_str(), 0);  // puts the old file back where that was moved aside
            return result;
        }
    }
    removeFile(aside);
    return 0;
}

void dropUnfinishedFiles() noexcept {
    for (const std::atomic<HANDLE>& file : known) {
        if (const HANDLE open = file.load(); open != nullptr) {
            setDeletion(open, true);
        }
    }
}

void removeLeftovers(const std::wstring& folder) {
    WIN32_FIND_DATAW found{};
    const Owner<SearchKind> search(::FindFirstFileW((folder + L"krvwinpr-*.tmp").c_str(), &found));
    for (bool more = static_cast<bool>(search); more; more = ::FindNextFileW(search.get(), &found) != 0) {
        constexpr DWORD noFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
        if ((found.dwFileAttributes & noFile) == 0 && isOld(found)) {
            // Opened for oneself alone, which nobody else must have it open for.
            const FileHandle last(::CreateFileW((folder + static_cast<const wchar_t*>(found.cFileName)).c_str(), DELETE,
                                                0, nullptr, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE, nullptr));
        }
    }
}

}  // namespace platform_windows
