// Files as a handler of crashes writes them: by calls of the kernel, on paths in memory that was there before. The
// system's own functions on paths take memory from the heap, which a crash may have left locked or broken.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <string_view>

#include "platform/windows/file_calls.h"

namespace platform_windows::crash {

// An absolute path as the kernel has it; empty where there was no room for all of it.
class KernelPath {
public:
    KernelPath() = default;
    // A native path, which may be empty, and what is put behind it.
    explicit KernelPath(std::wstring_view path, std::wstring_view name = {}) noexcept;

    // Another name in the same folder.
    KernelPath beside(std::wstring_view name) const noexcept;
    KernelPath folder() const noexcept { return beside({}); }

    std::wstring_view view() const noexcept { return {text_.data(), length_}; }
    bool empty() const noexcept { return length_ == 0; }

private:
    void add(std::wstring_view text) noexcept;

    static constexpr std::size_t longest = 1024;
    std::array<wchar_t, longest> text_{};
    std::size_t length_ = 0;
    bool whole_ = true;
};

// Disposition as the kernel has it (FILE_OPEN_IF), share as CreateFile() takes it.
OpenedFile openFile(const KernelPath& path, ACCESS_MASK access, ULONG share, ULONG disposition) noexcept;

// Makes the folder, if it is not there and the one above it is.
void makeFolder(const KernelPath& folder) noexcept;

// The file of that name has the whole content afterwards, in one step, or is as it was before; a system error code.
DWORD replaceFile(const KernelPath& path, std::string_view content) noexcept;

// Where that is not possible the file that is there, or a new one, is given the content.
DWORD writeFileAnyway(const KernelPath& path, std::string_view content) noexcept;

}  // namespace platform_windows::crash
