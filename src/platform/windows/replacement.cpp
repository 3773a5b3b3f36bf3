// Files that take another one's place: replaceFile() and rewriteFile() of files.h.
#include "platform/windows/files.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/patience.h"
#include "platform/windows/system_error.h"
#include "platform/windows/unfinished_file.h"

namespace platform_windows {

namespace {

// Why there is no way to replace the file: it is none, or marked as not to be changed.
DWORD refusal(const std::wstring& path) {
    if (isDevice(path)) {
        return ERROR_BAD_FILE_TYPE;
    }
    if (hasAttribute(path, FILE_ATTRIBUTE_DIRECTORY)) {
        return errorDirectoryNotSupported;
    }
    return hasAttribute(path, FILE_ATTRIBUTE_READONLY) ? DWORD{ERROR_FILE_READ_ONLY} : 0;
}

// Its rights forbid that it is deleted, or it is being deleted already: nothing to wait for before it is written
// itself.
bool cannotGo(const std::wstring& path) { return openFile(path, DELETE, OPEN_EXISTING).error == ERROR_ACCESS_DENIED; }

DWORD replaceBeside(const std::wstring& path, std::string_view content, Durability durability) {
    UnfinishedFile file(path);
    if (file.error() != 0) {
        return file.error();
    }
    if (const DWORD error = file.write(content, durability); error != 0) {
        return error;
    }
    const auto mayPass = [&](DWORD error) {
        return mayBeInUse(error) && (error != ERROR_ACCESS_DENIED || !cannotGo(path));
    };
    return patiently(replacingPatience, mayPass, [&] { return file.moveTo(path); });
}

DWORD overwrite(const std::wstring& path, std::string_view content, Durability durability) {
    const OpenedFile opened = openFile(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
    const HANDLE file = opened.file.get();
    const LONGLONG before = opened.error == 0 ? sizeOf(file) : -1;
    if (before < 0) {
        return opened.error != 0 ? opened.error : ::GetLastError();
    }
    std::string old(static_cast<std::size_t>(before), '\0');
    std::size_t length = 0;
    if (const DWORD error = readUpTo(file, old.data(), old.size(), length); error != 0) {
        return error;
    }
    old.resize(length);

    const auto size = static_cast<LONGLONG>(content.size());
    DWORD error = size > before ? setSize(file, size) : 0;
    error = error != 0 ? error : writeFromStart(file, content);
    error = error != 0 || size >= before ? error : setSize(file, size);
    error = error != 0 || durability == Durability::processEnd ? error : flush(file);
    if (error != 0) {
        writeFromStart(file, old);
        setSize(file, before);
    }
    return error;
}

DWORD writeInPlace(const std::wstring& path, std::string_view content, Durability durability) {
    const auto mayPass = [&](DWORD error) { return isInUse(error, path) || error == ERROR_FILE_EXISTS; };
    return patiently(openingPatience, mayPass, [&] {
        const DWORD error = overwrite(path, content, durability);
        return error == ERROR_FILE_NOT_FOUND ? createFile(path, content) : error;
    });
}

}  // namespace

DWORD replaceFile(const std::wstring& path, std::string_view content, Durability durability) {
    if (const DWORD error = refusal(path); error != 0) {
        return error;
    }
    const DWORD error = replaceBeside(path, content, durability);
    const bool written = error == 0 || (!isLackOfRoom(error) && writeInPlace(path, content, durability) == 0);
    removeLeftovers(folderOf(path));
    return written ? 0 : error;
}

DWORD rewriteFile(const std::wstring& path, std::string_view content) {
    if (const DWORD error = refusal(path); error != 0) {
        return error;
    }
    OpenedFile old = openPatiently(replacingPatience, path, GENERIC_WRITE, OPEN_EXISTING);
    if (old.error != 0) {
        return old.error;
    }
    const std::wstring final = finalPath(old.file.get());
    const std::wstring& target = final.empty() ? path : final;
    old.file.reset();
    const DWORD attributes = ::GetFileAttributesW(target.c_str());
    DWORD error = 0;
    {
        UnfinishedFile file(target);
        error = file.error() != 0 ? file.error() : file.write(content, Durability::powerFailure);
        if (error == 0) {
            error = patiently(replacingPatience, mayBeInUse, [&] { return file.replace(target); });
        }
    }
    removeLeftovers(folderOf(target));
    if (error == 0 && attributes != INVALID_FILE_ATTRIBUTES) {
        ::SetFileAttributesW(target.c_str(), attributes);
    }
    return error;
}

}  // namespace platform_windows
