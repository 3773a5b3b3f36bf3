#include "platform/linux/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/linux/c_string.h"
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
    TemporaryFile(const std::string& folder, const Replacement& how) : prefix_(folder + "/.krvwinpr-") {
        if (how.durable) {
            file_ = openFile(folder, O_WRONLY | O_TMPFILE, how.mode);
        }
        error_ = file_ ? 0 : underSomeName([&, this] {
            file_ = openFile(path_, O_WRONLY | O_CREAT | O_EXCL, how.mode);
            return static_cast<bool>(file_);
        });
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (named_) {
            ::unlink(path_.c_str());
        }
    }

    int error() const { return error_; }
    int descriptor() const { return file_.get(); }

    // Nothing may be written from then on.
    int moveTo(const std::string& path) {
        if (!named_) {
            const std::string open = "/proc/self/fd/" + std::to_string(file_.get());
            error_ = underSomeName([&, this] {
                return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, path_.c_str(), AT_SYMLINK_FOLLOW) == 0;
            });
        }
        if (error_ == 0 && (!file_.close() || std::rename(path_.c_str(), path.c_str()) != 0)) {
            error_ = errno;
        }
        named_ = named_ && error_ != 0;
        return error_;
    }

private:
    // Creates a directory entry under path_, which it chooses so that there was none. An errno value.
    template <typename Create>
    int underSomeName(const Create& create) {
        constexpr int attempts = 100;  // names left behind by processes that died
        for (int i = 0; i < attempts && !named_; ++i) {
            path_ = prefix_ + std::to_string(::getpid()) + "-" + std::to_string(i);
            named_ = create();
            if (!named_ && errno != EEXIST) {
                break;
            }
        }
        return named_ ? 0 : errno;
    }

    std::string prefix_;
    std::string path_;
    FileDescriptor file_;
    int error_ = 0;
    bool named_ = false;
};

int writeTemporary(TemporaryFile& file, std::string_view content, const Replacement& how) {
    if (how.owner != uid_t(-1)) {
        // Only the superuser can give a file away; anybody else stays its owner.
        [[maybe_unused]] const bool kept = ::fchown(file.descriptor(), how.owner, how.group) == 0 ||
                                           ::fchown(file.descriptor(), uid_t(-1), how.group) == 0;
    }
    if (how.exactMode && ::fchmod(file.descriptor(), how.mode) != 0) {
        return errno;
    }
    if (const Written written = writeAll(file.descriptor(), content); written.error != 0) {
        return written.error;
    }
    return how.durable && ::fsync(file.descriptor()) != 0 ? errno : 0;
}

// Its mode is a part of it. Most files have none, and not every file system knows them.
void copyAccessList(int from, int to) {
    constexpr const char* name = "system.posix_acl_access";
    const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
    if (size > 0) {
        std::vector<char> list(static_cast<std::size_t>(size));
        const ssize_t count = ::fgetxattr(from, name, list.data(), list.size());
        [[maybe_unused]] const bool copied =
            count > 0 && ::fsetxattr(to, name, list.data(), static_cast<std::size_t>(count), 0) == 0;
    }
}

// Writes the new file and lets it take the old one's place. With the rights of an open file, where there is one.
int replaceBy(std::string_view content, const Replacement& how, const std::string& path, int rightsOf) {
    const std::string folder = folderOf(path);
    TemporaryFile file(folder, how);
    if (file.error() != 0) {
        return file.error();
    }
    if (const int error = writeTemporary(file, content, how); error != 0) {
        return error;
    }
    if (rightsOf >= 0) {
        copyAccessList(rightsOf, file.descriptor());
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

int replaceFile(const std::string& path, std::string_view content, const Replacement& how) {
    struct stat old {};
    if (::lstat(path.c_str(), &old) == 0 && !S_ISREG(old.st_mode) && !S_ISLNK(old.st_mode)) {
        return S_ISDIR(old.st_mode) ? EISDIR : ENODEV;
    }
    return replaceBy(content, how, path, -1);
}

int rewriteFile(const std::string& path, std::string_view content) {
    const CString target(::realpath(path.c_str(), nullptr));
    if (!target) {
        return errno;
    }
    const FileDescriptor old = openFile(target.get(), O_WRONLY);
    struct stat status {};
    if (!old || ::fstat(old.get(), &status) != 0) {
        return errno == ENXIO ? ENODEV : errno;  // ENXIO: a pipe that nobody reads
    }
    if (!S_ISREG(status.st_mode)) {
        return ENODEV;
    }
    constexpr mode_t permissions = 07777;
    const Replacement how{.mode = status.st_mode & permissions,
                          .exactMode = true,
                          .owner = status.st_uid,
                          .group = status.st_gid,
                          .durable = true};
    return replaceBy(content, how, target.get(), old.get());
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
