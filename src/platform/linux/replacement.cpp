// Files that take another one's place: replaceFile() and rewriteFile() of files.h.
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "platform/linux/c_string.h"
#include "platform/linux/file_calls.h"
#include "platform/linux/files.h"
#include "platform/linux/unfinished_file.h"

namespace platform_linux {

namespace {

// A new file beside the one that it will replace; removed again unless it took that one's place.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string folder) : folder_(std::move(folder)) {}

    int descriptor() const { return file_.get(); }

    // A file that nothing is left of when the process dies; not every file system knows them.
    bool makeNameless(mode_t mode) {
        file_ = openFile(folder_, O_WRONLY | O_TMPFILE, mode);
        return static_cast<bool>(file_);
    }
    bool giveName() {
        const std::string open = "/proc/self/fd/" + std::to_string(file_.get());
        return underSomeName([&open](const std::string& path) {
            return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
        });
    }

    bool makeNamed(mode_t mode) {
        return underSomeName([&, this](const std::string& path) {
            file_ = openFile(path, O_WRONLY | O_CREAT | O_EXCL, mode);
            return static_cast<bool>(file_);
        });
    }

    // Nothing may be written from then on. An errno value.
    int moveTo(const std::string& path) {
        if (!file_.close() || std::rename(name_.path().c_str(), path.c_str()) != 0) {
            return errno;
        }
        name_.release();
        return 0;
    }

private:
    // Creates a directory entry under a name that there was none of; false with errno set where that is not possible.
    template <typename Create>
    bool underSomeName(const Create& create) {
        constexpr int attempts = 3;
        for (int i = 0; i < attempts; ++i) {
            name_.hold(AT_FDCWD, folder_ + "/" + unfinishedName());
            if (create(name_.path())) {
                return true;
            }
            name_.release();
            if (errno != EEXIST) {
                break;
            }
        }
        return false;
    }

    std::string folder_;
    FileDescriptor file_;
    UnfinishedName name_;
};

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

// One file's way into another one's place.
struct Move {
    const std::string& path;
    const std::string folder;
    std::string_view content;
    const Replacement& how;
    int rightsOf;  // an open file; -1 for none
};

int fill(int file, const Move& move) {
    const Replacement& how = move.how;
    if (how.owner != uid_t(-1)) {
        // Only the superuser can give a file away; anybody else stays its owner.
        [[maybe_unused]] const bool kept =
            ::fchown(file, how.owner, how.group) == 0 || ::fchown(file, uid_t(-1), how.group) == 0;
    } else {
        giveToOwnerOf(move.folder, file);
    }
    if (how.exactMode && ::fchmod(file, how.mode) != 0) {
        return errno;
    }
    if (const Written written = writeAll(file, move.content); written.error != 0) {
        return written.error;
    }
    if (how.durable && ::fsync(file) != 0) {
        return errno;
    }
    if (move.rightsOf >= 0) {
        copyAccessList(move.rightsOf, file);
    }
    return 0;
}

int writeBeside(TemporaryFile& file, const Move& move) {
    if (move.how.durable && file.makeNameless(move.how.mode)) {
        if (const int error = fill(file.descriptor(), move); error != 0) {
            return error;
        }
        if (file.giveName()) {
            return 0;
        }
    }
    return file.makeNamed(move.how.mode) ? fill(file.descriptor(), move) : errno;
}

int replaceBy(const Move& move) {
    TemporaryFile file(move.folder);
    if (const int error = writeBeside(file, move); error != 0) {
        return error;
    }
    if (const int error = file.moveTo(move.path); error != 0) {
        return error;
    }
    if (move.how.durable) {
        // The new name is in place whether or not this works.
        const FileDescriptor directory = openFile(move.folder, O_RDONLY | O_DIRECTORY);
        if (directory) {
            ::fsync(directory.get());
        }
    }
    removeLeftovers(move.folder);
    return 0;
}

// Whether it is the folder that does not let a file be made or renamed.
bool folderRefuses(int error) {
    constexpr std::array refusals = {EACCES, EPERM, EROFS, EBUSY, EXDEV, EINVAL, ENOSYS, EOPNOTSUPP};
    return std::find(refusals.begin(), refusals.end(), error) != refusals.end();
}

// Writes over the file itself; where that fails, what it held before is put back. Whether it worked.
bool overwrite(const std::string& path, std::string_view content) {
    FileDescriptor file = openFile(path, O_RDWR | O_NOFOLLOW);
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return false;
    }
    std::string old(content.size(), '\0');
    const std::optional<std::size_t> length = readUpTo(file.get(), old.data(), old.size());
    const auto write = [&file](std::string_view text, off_t size) {
        return ::lseek(file.get(), 0, SEEK_SET) == 0 && writeAll(file.get(), text).error == 0 &&
               ::ftruncate(file.get(), size) == 0;
    };
    if (!length || write(content, static_cast<off_t>(content.size()))) {
        return length && file.close();
    }
    old.resize(*length);
    write(old, status.st_size);
    return false;
}

}  // namespace

int replaceFile(const std::string& path, std::string_view content, const Replacement& how) {
    struct stat old {};
    if (::lstat(path.c_str(), &old) == 0 && !S_ISREG(old.st_mode) && !S_ISLNK(old.st_mode)) {
        return S_ISDIR(old.st_mode) ? EISDIR : ENODEV;
    }
    const int error = replaceBy({path, folderOf(path), content, how, -1});
    return how.orInPlace && folderRefuses(error) && overwrite(path, content) ? 0 : error;
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
    const std::string place = target.get();
    return replaceBy({place, folderOf(place), content, how, old.get()});
}

}  // namespace platform_linux
