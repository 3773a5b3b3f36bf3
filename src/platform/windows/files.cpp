#include "platform/windows/files.h"

#include <array>

#include "platform/windows/file_calls.h"
#include "platform/windows/patience.h"
#include "platform/windows/system_error.h"

namespace platform_windows {

namespace {

DWORD readOnce(const std::wstring& path, std::string& content) {
    const OpenedFile opened = openFile(path, GENERIC_READ, OPEN_EXISTING);
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

}  // namespace

DWORD readWholeFile(const std::wstring& path, std::string& content) {
    const auto mayPass = [](DWORD error) { return isInUse(error); };
    return patiently(openingPatience, mayPass, [&] { return readOnce(path, content); });
}

DWORD createFile(const std::wstring& path, std::string_view content) {
    OpenedFile opened = openFile(path, GENERIC_WRITE | DELETE, CREATE_NEW);
    if (opened.error != 0) {
        return opened.error == errorDirectoryNotSupported ? DWORD{ERROR_FILE_EXISTS} : opened.error;
    }
    const HANDLE file = opened.file.get();
    const bool goes = setDeletion(file, true) == 0;
    DWORD error = writeFromStart(file, content);
    if (goes && error == 0) {
        error = setDeletion(file, false);
    }
    opened.file.reset();
    if (!goes && error != 0) {
        ::DeleteFileW(path.c_str());
    }
    return error;
}

DWORD appendToFile(const std::wstring& path, std::string_view content) {
    const OpenedFile opened = openPatiently(openingPatience, path, GENERIC_WRITE, OPEN_ALWAYS);
    if (opened.error != 0) {
        return opened.error;
    }
    const HANDLE file = opened.file.get();
    const LONGLONG before = sizeOf(file);
    std::size_t written = 0;
    const auto mayPass = [&](DWORD error) { return written == 0 && isInUse(error); };
    const DWORD error =
        patiently(openingPatience, mayPass, [&] { return writeAll(file, content, Where::atEnd, written); });
    if (error != 0 && before >= 0 && sizeOf(file) == before + static_cast<LONGLONG>(written)) {
        setSize(file, before);
    }
    return error;
}

DWORD removeFile(const std::wstring& path) {
    const auto mayPass = [&](DWORD error) { return isInUse(error, path); };
    return patiently(openingPatience, mayPass, [&] { return ::DeleteFileW(path.c_str()) != 0 ? 0 : ::GetLastError(); });
}

bool isSameFile(const std::wstring& path, const std::wstring& other) {
    if (!isFile(path)) {
        return false;
    }
    const OpenedFile one = openFile(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    const OpenedFile two = openFile(other, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
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
