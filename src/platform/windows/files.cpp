#include "platform/windows/files.h"

#include <algorithm>
#include <utility>

#include "platform/windows/file_calls.h"
#include "platform/windows/patience.h"
#include "platform/windows/system_error.h"

namespace platform_windows {

namespace {

// The file may have grown since it was opened.
constexpr std::size_t behindTheEnd = 4096;

bool whileInUse(DWORD error) { return isInUse(error); }

DWORD readOnce(const std::wstring& path, std::string& content) {
    // Memory that is new is fastest filled while it is still in the processor's cache.
    constexpr std::size_t piece = std::size_t{1} << 18;
    ReadableFile file;
    DWORD error = file.open(path);
    std::string text;
    if (error == 0) {
        file.makeRoom(text);
    }
    for (bool atEnd = false; error == 0 && !atEnd;) {
        const std::size_t before = text.size();
        error = file.read(text, piece);
        atEnd = text.size() == before;
    }
    if (error == 0) {
        content = std::move(text);
    }
    return error;
}

}  // namespace

DWORD ReadableFile::open(const std::wstring& path) {
    OpenedFile opened = openFile(path, GENERIC_READ, OPEN_EXISTING);
    if (opened.error != 0) {
        return opened.error;
    }
    file_ = std::move(opened.file);
    if (::GetFileInformationByHandle(file_.get(), &opened_) == 0) {
        return ::GetLastError();
    }
    return size() <= std::string().max_size() - behindTheEnd ? DWORD{0} : DWORD{ERROR_NOT_ENOUGH_MEMORY};
}

void ReadableFile::makeRoom(std::string& text) const {
    text.reserve(text.size() + static_cast<std::size_t>(size()) + behindTheEnd);
}

DWORD ReadableFile::read(std::string& to, std::size_t atMost) {
    const std::size_t before = to.size();
    const ULONGLONG left = size() > done_ ? size() - done_ : behindTheEnd;
    to.resize(before + static_cast<std::size_t>(std::min<ULONGLONG>(atMost, left)));
    std::size_t count = 0;
    const DWORD error = readUpTo(file_.get(), to.data() + before, to.size() - before, count);
    done_ += count;
    to.resize(before + count);
    return error;
}

bool ReadableFile::unchanged() const {
    BY_HANDLE_FILE_INFORMATION now{};
    return ::GetFileInformationByHandle(file_.get(), &now) != 0 && sizeIn(now) == size() &&
           now.ftLastWriteTime.dwLowDateTime == opened_.ftLastWriteTime.dwLowDateTime &&
           now.ftLastWriteTime.dwHighDateTime == opened_.ftLastWriteTime.dwHighDateTime;
}

DWORD openPatiently(const std::wstring& path, ReadableFile& file) {
    return patiently(openingPatience, whileInUse, [&] { return file.open(path); });
}

DWORD readWholeFile(const std::wstring& path, std::string& content) {
    return patiently(openingPatience, whileInUse, [&] { return readOnce(path, content); });
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
