#include "platform/linux/files.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

#include "platform/linux/file_calls.h"

namespace platform_linux {

namespace {

// Files may have grown since they were opened, and some say that they are empty and are not.
constexpr std::size_t behindTheEnd = 4096;

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

int ReadableFile::open(const std::string& path) {
    file_ = openFile(path, O_RDONLY);
    if (!file_ || ::fstat(file_.get(), &opened_) != 0) {
        return errno;
    }
    if (!S_ISREG(opened_.st_mode)) {
        return S_ISDIR(opened_.st_mode) ? EISDIR : ENODEV;
    }
    return 0;
}

void ReadableFile::makeRoom(std::string& text) const { text.reserve(text.size() + size() + behindTheEnd); }

int ReadableFile::read(std::string& to, std::size_t atMost) {
    const std::size_t before = to.size();
    to.resize(before + std::min(atMost, size() > done_ ? size() - done_ : behindTheEnd));
    const std::optional<std::size_t> count = readUpTo(file_.get(), to.data() + before, to.size() - before);
    const int error = count ? 0 : errno;
    done_ += count.value_or(0);
    to.resize(before + count.value_or(0));
    return error;
}

bool ReadableFile::unchanged() const {
    struct stat now {};
    return ::fstat(file_.get(), &now) == 0 && now.st_size == opened_.st_size &&
           now.st_mtim.tv_sec == opened_.st_mtim.tv_sec && now.st_mtim.tv_nsec == opened_.st_mtim.tv_nsec;
}

int readWholeFile(const std::string& path, std::string& content) {
    return readStartOfFile(path, std::string::npos, content);
}

int readStartOfFile(const std::string& path, std::size_t most, std::string& content) {
    // Memory that is new is fastest filled while it is still in the processor's cache.
    constexpr std::size_t piece = std::size_t{1} << 18;
    ReadableFile file;
    int error = file.open(path);
    std::string text;
    if (error == 0 && file.size() <= most) {
        file.makeRoom(text);
    }
    for (bool atEnd = false; error == 0 && !atEnd && text.size() < most;) {
        const std::size_t before = text.size();
        error = file.read(text, std::min(piece, most - before));
        atEnd = text.size() == before;
    }
    if (error == 0) {
        content = std::move(text);
    }
    return error;
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
