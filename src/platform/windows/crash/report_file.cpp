#include "platform/windows/crash/report_file.h"

#include <winternl.h>

#include <algorithm>

#include "platform/crash/report_log.h"
#include "platform/windows/patience.h"

namespace platform_windows::crash {

namespace {

using platform::crash::longestLog;

// Pages of the system's, not of the heap.
struct PagesKind {
    using Handle = char*;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle pages) noexcept { ::VirtualFree(pages, 0, MEM_RELEASE); }
};
using Pages = Owner<PagesKind>;

DWORD seek(HANDLE file, LONGLONG place) noexcept {
    LARGE_INTEGER position{};
    position.QuadPart = place;
    return ::SetFilePointerEx(file, position, nullptr, FILE_BEGIN) != 0 ? 0 : ::GetLastError();
}

DWORD append(HANDLE file, LONGLONG size, std::string_view entry) noexcept {
    std::size_t written = 0;
    DWORD error = seek(file, size);
    error = error != 0 ? error : writeAll(file, entry, Where::atPosition, written);
    if (error != 0) {
        setSize(file, size);
    }
    return error;
}

DWORD replaceOlder(OpenedFile old, const KernelPath& log, LONGLONG size, std::string_view entry) noexcept {
    const Pages pages(static_cast<char*>(
        ::VirtualAlloc(nullptr, longestLog + entry.size(), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)));
    if (!pages) {
        return ::GetLastError();
    }
    std::size_t length = 0;
    DWORD error = seek(old.file.get(), std::max<LONGLONG>(0, size - LONGLONG{longestLog}));
    error = error != 0 ? error : readUpTo(old.file.get(), pages.get(), longestLog, length);
    if (error != 0) {
        return error;
    }
    old.file.reset();  // nobody may have it open who does not let it go
    const std::string_view kept = platform::crash::keptPart({pages.get(), length}, entry.size());
    char* const begin = pages.get() + length - kept.size();
    std::copy(entry.begin(), entry.end(), pages.get() + length);
    return replaceFile(log, {begin, kept.size() + entry.size()});
}

}  // namespace

DWORD appendEntry(const KernelPath& log, std::string_view entry) noexcept {
    makeFolder(log.folder());
    OpenedFile opened;
    const DWORD error = patiently(openingPatience, mayBeInUse, [&] {
        opened = openFile(log, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, FILE_OPEN_IF);
        return opened.error;
    });
    const LONGLONG size = error == 0 ? sizeOf(opened.file.get()) : -1;
    if (size < 0) {
        return error != 0 ? error : ::GetLastError();
    }
    if (static_cast<std::size_t>(size) + entry.size() <= longestLog) {
        return append(opened.file.get(), size, entry);
    }
    return replaceOlder(std::move(opened), log, size, entry);
}

}  // namespace platform_windows::crash
