#include "platform/linux/file_calls.h"

#include <sys/sendfile.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <climits>

namespace platform_linux {

namespace {

// For file systems that cannot be sent to.
int copyInPieces(int from, int to, off_t done) {
    std::array<char, 65536> piece;
    while (true) {
        const ssize_t count = ::pread(from, piece.data(), piece.size(), done);
        if (count == 0) {
            return 0;
        }
        if (count > 0) {
            if (const int error = writeAll(to, {piece.data(), static_cast<std::size_t>(count)}).error; error != 0) {
                return error;
            }
            done += count;
        } else if (errno != EINTR) {
            return errno;
        }
    }
}

}  // namespace

FileDescriptor openFile(const std::string& path, int flags, mode_t mode) {
    constexpr int quietly = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    int descriptor = -1;
    do {
        descriptor = ::open(path.c_str(), flags | quietly, mode);
    } while (descriptor < 0 && errno == EINTR);
    return FileDescriptor(descriptor);
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string(".") : path.substr(0, slash + 1);
}

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

int copyContent(int from, int to) {
    struct stat status {};
    if (::fstat(from, &status) != 0) {
        return errno;
    }
    off_t done = 0;
    while (done < status.st_size) {
        const ssize_t sent = ::sendfile(to, from, &done, static_cast<std::size_t>(status.st_size - done));
        if (sent <= 0 && errno != EINTR) {
            return errno == EINVAL || errno == ENOSYS ? copyInPieces(from, to, done) : errno;
        }
    }
    return 0;
}

void giveToOwnerOf(const std::string& folder, int made) {
    struct stat status {};
    if (::geteuid() == 0 && ::stat(folder.c_str(), &status) == 0 && status.st_uid != 0) {
        [[maybe_unused]] const int refused = ::fchown(made, status.st_uid, status.st_gid);
    }
}

bool knowsNoLocks(int error) { return error == ENOLCK || error == EOPNOTSUPP || error == ENOSYS || error == EINVAL; }

std::optional<Link> linkAt(const std::string& path) {
    const FileDescriptor file = openFile(path, O_PATH | O_NOFOLLOW);
    struct stat status {};
    std::array<char, PATH_MAX> target;
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISLNK(status.st_mode)) {
        return std::nullopt;
    }
    const ssize_t length = ::readlinkat(file.get(), "", target.data(), target.size());
    if (length <= 0) {
        return std::nullopt;
    }
    const std::string_view next(target.data(), static_cast<std::size_t>(length));
    const std::string folder = next.front() == '/' ? std::string() : path.substr(0, path.rfind('/') + 1);
    return Link{status.st_uid, folder + std::string(next)};
}

}  // namespace platform_linux
