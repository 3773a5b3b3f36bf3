// What the functions on whole files are made of: calls of the system. They return system error codes, 0 for success, as
// files.h says.
#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <string_view>

#include "platform/windows/handle.h"

namespace platform_windows {

struct OpenedFile {
    FileHandle file;
    DWORD error = 0;
};

// Others may do with the file meanwhile whatever they want, but for what the access asked for forbids them.
OpenedFile openFile(const std::wstring& path, DWORD access, DWORD disposition);

bool hasAttribute(const std::wstring& path, DWORD attribute);

// The folder of a file, with its separator.
std::wstring folderOf(const std::wstring& path);

// Bytes read into the buffer; fewer than asked for only at the end of the file.
DWORD readUpTo(HANDLE file, char* to, std::size_t size, std::size_t& done);

// Writes at the file's position, or always behind the end of the file.
enum class Where { atPosition, atEnd };
DWORD writeAll(HANDLE file, std::string_view content, Where where, std::size_t& written);
DWORD writeFromStart(HANDLE file, std::string_view content);

LONGLONG sizeOf(HANDLE file);  // -1 where the system does not tell
DWORD setSize(HANDLE file, LONGLONG size);

// What was written survives a power failure.
DWORD flush(HANDLE file);

// Whether the file goes when nobody has it open any more. Nobody can open it while that is so. Needs the access DELETE.
DWORD setDeletion(HANDLE file, bool whenClosed);

// Gives an open file another name in its folder; a file that has that name goes. Needs the access DELETE.
DWORD renameFile(HANDLE file, const std::wstring& path);

// A native path as the kernel has it: the prefix and the rest of it.
struct KernelName {
    std::wstring_view prefix;
    std::wstring_view rest;
};
KernelName kernelName(std::wstring_view path) noexcept;

// The same with a path as the kernel has it, in room for it and FILE_RENAME_INFORMATION, so that nothing is allocated.
DWORD renameFile(HANDLE file, std::wstring_view kernelPath, std::span<unsigned char> room) noexcept;

}  // namespace platform_windows
