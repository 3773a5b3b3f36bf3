#include "platform/linux/files.h"

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <optional>
#include <utility>

#include "platform/linux/file_calls.h"

namespace platform_linux {

namespace {

// A regular file; an errno value otherwise.
int openForReading(const std::string& path, FileDescriptor& file, struct stat& status) {
    file = openFile(path, O_RDONLY);
    if (!file || ::fstat(file.get(), &status) != 0) {
        return errno;
    }
    if (!S_ISREG(status.st_mode)) {
        return S_ISDIR(status.st_mode) ? EISDIR : ENODEV;
    }
    return 0;
}

// The file behind links that may be trusted; made where there is none.
FileDescriptor openToAppend(std::string path) {
    constexpr int attempts = 16;
    for (int i = 0; i < attempts; ++i) {
        FileDescriptor file = openFile(path, O_WRONLY | O_APPEND | O_NOFOLLOW);
        if (!file && errno == ENOENT) {
            file = openFile(path, O_WRONLY | O_APPEND | O_CREAT | O_EXCL, 0666);
            if (file) {
                giveToOwnerOf(folderOf(path), file.get());
            }
        }
        if (file || (errno != ELOOP && errno != EEXIST)) {
            return file;
        }
        if (std::optional<Link> link = linkAt(path)) {
            if (link->owner != ::geteuid() && link->owner != 0) {
                errno = EMLINK;
                return {};
            }
            path = std::move(link->target);
        }
    }
    errno = ELOOP;
    return {};
}

}  // namespace

int readWholeFile(const std::string& path, std::string& content) {
    FileDescriptor file;
    struct stat status {};
    if (const int error = openForReading(path, file, status); error != 0) {
        return error;
    }
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    std::optional<std::size_t> count = readUpTo(file.get(), text.data(), text.size());
    if (!count) {
        return errno;
    }
    text.resize(*count);

    // The file may have grown meanwhile, and some say that they are empty and are not.
    std::array<char, 4096> more;
    do {
        count = readUpTo(file.get(), more.data(), more.size());
        if (!count) {
            return errno;
        }
        text.append(more.data(), *count);
    } while (*count == more.size());
    content = std::move(text);
    return 0;
}

int readStartOfFile(const std::string& path, std::size_t most, std::string& content) {
    FileDescriptor file;
    struct stat status {};
    if (const int error = openForReading(path, file, status); error != 0) {
        return error;
    }
    std::string text(most, '\0');
    const std::optional<std::size_t> count = readUpTo(file.get(), text.data(), most);
    if (!count) {
        return errno;
    }
    text.resize(*count);
    content = std::move(text);
    return 0;
}

int appendToFile(const std::string& path, std::string_view content) {
    FileDescriptor file = openToAppend(path);
    if (!file) {
        return errno == ENXIO ? ENODEV : errno;  // ENXIO: a pipe that nobody reads
    }
    struct stat before {};
    const bool known = ::fstat(file.get(), &before) == 0 && S_ISREG(before.st_mode);
    const Written written = writeAll(file.get(), content);
    if (written.error != 0) {
        // With O_APPEND the position is the end of what this process wrote last: cut back where that follows the old
        // end and is the new one, so that nobody else's bytes lie in between or behind.
        struct stat after {};
        const off_t end = ::lseek(file.get(), 0, SEEK_CUR);
        if (known && end == before.st_size + static_cast<off_t>(written.bytes) && ::fstat(file.get(), &after) == 0 &&
            after.st_size == end) {
            [[maybe_unused]] const int result = ::ftruncate(file.get(), before.st_size);
        }
        return written.error;
    }
    return file.close() ? 0 : errno;
}

}  // namespace platform_linux
