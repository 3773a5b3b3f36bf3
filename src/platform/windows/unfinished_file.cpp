#include "platform/windows/unfinished_file.h"

#include <windows.h>

#include <random>
#include <string_view>

#include "platform/windows/handle.h"

namespace platform_windows {

namespace {

struct SearchKind {
    using Handle = HANDLE;
    static Handle none() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Handle handle) noexcept { ::FindClose(handle); }
};

ULONGLONG ticks(const FILETIME& time) { return ULONGLONG{time.dwHighDateTime} << 32U | time.dwLowDateTime; }

bool isOld(const WIN32_FIND_DATAW& found) {
    constexpr ULONGLONG old = 6ULL * 60 * 60 * 10'000'000;  // hours in ticks of 100 nanoseconds
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    return ticks(found.ftLastWriteTime) + old < ticks(now);
}

}  // namespace

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
