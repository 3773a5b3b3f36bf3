#include "platform/linux/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <utility>

#include "platform/linux/file_descriptor.h"

namespace platform_linux {

namespace {

// Opening a pipe or a terminal neither waits nor takes it over.
constexpr int quietly = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

FileDescriptor openFile(const std::string& path, int flags, mode_t mode = 0) {
    int descriptor = -1;
    do {
        descriptor = ::open(path.c_str(), flags | quietly, mode);
    } while (descriptor < 0 && errno == EINTR);
    return FileDescriptor(descriptor);
}

struct Written {
    std::size_t bytes = 0;
    int error = 0;
};

Written writeAll(int descriptor, std::string_view content) {
    Written result;
    while (result.bytes < content.size() && result.error == 0) {
        const ssize_t count = ::write(descriptor, content.data() + result.bytes, content.size() - result.bytes);
        if (count > 0) {
            result.bytes += static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            result.error = count == 0 ? EIO : errno;
        }
    }
    return result;
}

// Bytes read; fewer than asked for only at the end of the file. Nothing where reading failed, with errno set.
std::optional<std::size_t> readUpTo(int descriptor, char* to, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = ::read(descriptor, to + done, size - done);
        if (count == 0) {
            break;
        }
        if (count > 0) {
            done += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            return std::nullopt;
        }
    }
    return done;
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string(".") : path.substr(0, slash + 1);
}

// A new file beside the one that it will replace; removed again unless it took that one's place.
class TemporaryFile {
public:
    TemporaryFile(const std::string& folder, mode_t mode) {
        constexpr int attempts = 100;  // names left behind by processes that died
        for (int i = 0; i < attempts; ++i) {
            path_ = folder + "/.krvwinpr-" + std::to_string(::getpid()) + "-" + std::to_string(i);
            file_ = openFile(path_, O_WRONLY | O_CREAT | O_EXCL, mode);
            if (file_ || errno != EEXIST) {
                break;
            }
        }
        error_ = file_ ? 0 : errno;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (error_ == 0 && !moved_) {
            ::unlink(path_.c_str());
        }
    }

    int error() const { return error_; }
    int descriptor() const { return file_.get(); }
    int close() { return file_.close() ? 0 : errno; }
    int moveTo(const std::string& path) {
        moved_ = std::rename(path_.c_str(), path.c_str()) == 0;
        return moved_ ? 0 : errno;
    }

private:
    std::string path_;
    FileDescriptor file_;
    int error_ = 0;
    bool moved_ = false;
};

int writeTemporary(TemporaryFile& file, std::string_view content, const Replacement& how) {
    if (how.owner != uid_t(-1)) {
        // Only the superuser can give a file away; anybody else stays its owner.
        [[maybe_unused]] const int result = ::fchown(file.descriptor(), how.owner, how.group);
    }
    if (how.exactMode && ::fchmod(file.descriptor(), how.mode) != 0) {
        return errno;
    }
    if (const Written written = writeAll(file.descriptor(), content); written.error != 0) {
        return written.error;
    }
    if (how.durable && ::fsync(file.descriptor()) != 0) {
        return errno;
    }
    return file.close();
}

}  // namespace

int readWholeFile(const std::string& path, std::string& content) {
    const FileDescriptor file = openFile(path, O_RDONLY);
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        return errno;
    }
    if (!S_ISREG(status.st_mode)) {
        return S_ISDIR(status.st_mode) ? EISDIR : ENODEV;
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

int replaceFile(const std::string& path, std::string_view content, const Replacement& how) {
    struct stat old {};
    if (::lstat(path.c_str(), &old) == 0 && !S_ISREG(old.st_mode) && !S_ISLNK(old.st_mode)) {
        return S_ISDIR(old.st_mode) ? EISDIR : ENODEV;
    }
    const std::string folder = folderOf(path);
    TemporaryFile file(folder, how.mode);
    if (file.error() != 0) {
        return file.error();
    }
    if (const int error = writeTemporary(file, content, how); error != 0) {
        return error;
    }
    if (const int error = file.moveTo(path); error != 0) {
        return error;
    }
    if (how.durable) {
        // The new name is in place whether or not this works.
        const FileDescriptor directory = openFile(folder, O_RDONLY | O_DIRECTORY);
        if (directory) {
            ::fsync(directory.get());
        }
    }
    return 0;
}

int appendToFile(const std::string& path, std::string_view content) {
    FileDescriptor file = openFile(path, O_WRONLY | O_APPEND | O_CREAT, 0666);
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
