// Whole files, read and written without surprises. Paths are native ones (nativePath()). The functions return 0 or a
// system error code and throw nothing but std::bad_alloc; errorDirectoryNotSupported (system_error.h) stands for a
// folder, ERROR_BAD_FILE_TYPE for a device or a pipe. Files that others have open, or delete meanwhile, are no obstacle
// as far as those allow it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/windows/handle.h"

namespace platform_windows {

// A path as the system's functions take it: absolute, and in the form without a limit of length where it is long.
// Throws runtime::Error for what can be no path.
std::wstring nativePath(const std::string& path);

// "\\.\NUL" and its like; "CON" in any folder becomes one of them.
bool isDevice(const std::wstring& path);

// A native path as users write it.
std::string shownPath(std::wstring_view path);

inline ULONGLONG sizeIn(const BY_HANDLE_FILE_INFORMATION& file) {
    return ULARGE_INTEGER{{file.nFileSizeLow, file.nFileSizeHigh}}.QuadPart;
}

// A file on a disk, read from its start to its end.
class ReadableFile {
public:
    DWORD open(const std::wstring& path);

    // In bytes, as the file said when it was opened; no more than a text can have.
    ULONGLONG size() const { return sizeIn(opened_); }

    // Room for the rest of the text, and for the look behind its end.
    void makeRoom(std::string& text) const;

    // Appends up to so many bytes, none only at the end.
    DWORD read(std::string& to, std::size_t atMost);

    // Whether size and time stamp are still those of the opening.
    bool unchanged() const;

private:
    FileHandle file_;
    BY_HANDLE_FILE_INFORMATION opened_{};
    ULONGLONG done_ = 0;
};

// A file that others keep from being opened is waited for, for two seconds.
DWORD openPatiently(const std::wstring& path, ReadableFile& file);

// A file that others keep from being read is waited for, for two seconds.
DWORD readWholeFile(const std::wstring& path, std::string& content);

// What a written file survives: the end of the program, or a power failure as well.
enum class Durability { processEnd, powerFailure };

// The file of that name has the whole content afterwards or, where that fails, is as it was before. It is written
// beside its place and then moved there. Where another program keeps the old file open in a way that forbids this for
// longer than half a second, or the folder takes no new file or lets none be moved, the old file itself is given the
// new content, within two seconds more: whoever reads it at that moment may see a mixture, but there is room for all of
// it beforehand, and what it held is put back where that fails. Removes what killed processes left in the folder.
// ERROR_FILE_READ_ONLY for a file with that attribute.
DWORD replaceFile(const std::wstring& path, std::string_view content, Durability durability = Durability::processEnd);

// The file of that name, which exists, has another content afterwards or is as it was before. A link is followed. Name,
// attributes and rights stay where the file system lets one file take another's place with them, otherwise the rights
// are those of a new file. Another program that keeps the old file open for longer than half a second makes it fail.
// ERROR_FILE_READ_ONLY as above.
DWORD rewriteFile(const std::wstring& path, std::string_view content);

// Makes a new file with the whole content, which nobody can open before it is whole; ERROR_FILE_EXISTS where there is
// something of that name already. Nothing is left where it fails, or the process dies meanwhile.
DWORD createFile(const std::wstring& path, std::string_view content);

// Appends in one step, behind whatever others append, creating the file first where there is none. Where not everything
// could be written, nothing is (unless somebody else appended meanwhile). Others are waited for, for two seconds.
DWORD appendToFile(const std::wstring& path, std::string_view content);

// Others are waited for, for two seconds.
DWORD removeFile(const std::wstring& path);

bool isFile(const std::wstring& path);

// Whether both paths, the second one over links too, lead to one file that exists.
bool isSameFile(const std::wstring& path, const std::wstring& other);

}  // namespace platform_windows
