#include "platform/linux/messenger/linux_order_folder.h"

#include <dirent.h>
#include <pwd.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <memory>
#include <optional>
#include <utility>

#include "messenger/order_names.h"
#include "platform/linux/file_calls.h"
#include "platform/linux/files.h"
#include "platform/linux/linux_error.h"
#include "platform/linux/messenger/dos_names.h"
#include "platform/linux/messenger/folder_rights.h"
#include "platform/linux/paths.h"
#include "runtime/utf8.h"

namespace platform_linux::messenger {

namespace {

constexpr std::size_t mostBytes = 1024;
constexpr mode_t newFile = 0666;
constexpr const char* completionName = "KRVWINPR.OK";

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

FileDescriptor openIn(int folder, const std::string& name, int flags, mode_t mode = 0) {
    constexpr int quietly = O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW;
    return FileDescriptor(::openat(folder, name.c_str(), flags | quietly, mode));
}

std::string userName(uid_t user) {
    const passwd* known = ::getpwuid(user);
    return known != nullptr ? known->pw_name : std::to_string(user);
}

[[noreturn]] void refuse(const std::string& path, const std::string& reason) {
    throw runtime::Error(runtime::errPermissionDenied, runtime::shown(path) + " (" + reason + ")");
}

// Of the folder itself; a link, or a name for a file that lies elsewhere, would let somebody else's file be read.
void requireOwnFile(int folder, int file, const std::string& path) {
    struct stat status {};
    if (::fstat(file, &status) != 0) {
        throwFileError(errno, path);
    }
    if (!S_ISREG(status.st_mode)) {
        refuse(path, "das ist keine gewöhnliche Datei");
    }
    if (status.st_nlink > 1) {
        refuse(path, "die Datei hat noch einen anderen Namen");
    }
    if (!mayWrite(status.st_uid, folder)) {
        refuse(path, "die Datei gehört dem Benutzer " + userName(status.st_uid) +
                         ", der in diesen Ordner nicht schreiben darf");
    }
}

// None where this user may not do that with a file of the folder.
FileDescriptor openOwn(int folder, const std::string& name, int flags, const std::string& path) {
    FileDescriptor file = openIn(folder, name, flags);
    if (!file && errno == ELOOP) {
        refuse(path, "das ist ein Verweis");
    }
    if (!file && (errno == ENXIO || errno == EISDIR)) {
        refuse(path, "das ist keine gewöhnliche Datei");
    }
    if (!file && errno != EACCES) {
        throwFileError(errno, path);
    }
    if (file) {
        requireOwnFile(folder, file.get(), path);
    }
    return file;
}

// 0 or an errno value.
int writeAt(int file, std::string_view content, off_t position) {
    while (!content.empty()) {
        const ssize_t count = ::pwrite(file, content.data(), content.size(), position);
        if (count == 0 || (count < 0 && errno != EINTR)) {
            return count == 0 ? EIO : errno;
        }
        content.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
        position += count > 0 ? count : 0;
    }
    return 0;
}

// What is behind the first byte first, and that byte last.
int changeContent(int file, std::string_view content) {
    int error = writeAt(file, content.substr(std::min<std::size_t>(1, content.size())), 1);
    if (error == 0 && ::ftruncate(file, static_cast<off_t>(content.size())) != 0) {
        error = errno;
    }
    if (error == 0) {
        error = writeAt(file, content.substr(0, 1), 0);
    }
    // EINVAL: the disk has nothing to make durable.
    return error == 0 && ::fdatasync(file) != 0 && errno != EINVAL ? errno : error;
}

// Without a name until it is whole, so that nobody reads half of it, whatever ends this process. Not every disk knows
// such files. 0 or an errno value.
int makeWhole(int folder, const std::string& name, std::string_view content, const std::string& path) {
    FileDescriptor file = openIn(folder, ".", O_WRONLY | O_TMPFILE, newFile);
    if (!file) {
        return EOPNOTSUPP;
    }
    giveToOwnerOf(folderOf(path), file.get());
    if (const int error = writeAll(file.get(), content).error; error != 0) {
        return error;
    }
    const std::string open = "/proc/self/fd/" + std::to_string(file.get());
    const bool linked = ::linkat(AT_FDCWD, open.c_str(), folder, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    return linked ? 0 : errno;
}

// 0 or an errno value; then there is nothing of it.
int makeInPlace(int folder, const std::string& name, std::string_view content, const std::string& path) {
    FileDescriptor file = openIn(folder, name, O_WRONLY | O_CREAT | O_EXCL, newFile);
    if (!file) {
        return errno;
    }
    giveToOwnerOf(folderOf(path), file.get());
    int error = writeAll(file.get(), content).error;
    if (!file.close() && error == 0) {
        error = errno;
    }
    if (error != 0) {
        ::unlinkat(folder, name.c_str(), 0);
    }
    return error;
}

// 0 or an errno value; EEXIST where the new name is taken.
int renameWithout(int folder, const std::string& name, const std::string& newName) {
    if (::renameat2(folder, name.c_str(), folder, newName.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    // The disk cannot refuse to replace; somebody who takes the name in this moment loses.
    struct stat status {};
    if (::fstatat(folder, newName.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
        return EEXIST;
    }
    return ::renameat(folder, name.c_str(), folder, newName.c_str()) == 0 ? 0 : errno;
}

// A disk of the network that went away, too.
bool isGone(int error) {
    return error == ENOENT || error == ENOTDIR || error == ESTALE || error == ENOTCONN || error == EHOSTDOWN;
}

std::string markOf(const struct stat& status) {
    std::string mark;
    for (const std::int64_t part : {std::int64_t(status.st_ino), std::int64_t(status.st_size),
                                    std::int64_t(status.st_mtim.tv_sec), std::int64_t(status.st_mtim.tv_nsec),
                                    std::int64_t(status.st_ctim.tv_sec), std::int64_t(status.st_ctim.tv_nsec)}) {
        mark += std::to_string(part) + " ";
    }
    return mark;
}

}  // namespace

LinuxOrderFolder::LinuxOrderFolder(std::string path, const std::string& identity, EventQueue& queue)
    : path_(std::move(path)), queue_(queue), watch_(path_), hold_(fileNamed(holdName), identity) {
    struct stat status {};
    if (::stat(path_.c_str(), &status) == 0) {
        device_ = status.st_dev;
        number_ = status.st_ino;
    }
    open();
    if (watch_.error() == 0) {
        queue_.add(watch_.descriptor(), *this);
    }
}

LinuxOrderFolder::~LinuxOrderFolder() { queue_.remove(watch_.descriptor()); }

// The folder that it was from the beginning. Another one may lie at its path by now.
FileDescriptor LinuxOrderFolder::open() const {
    FileDescriptor folder = openFile(path_, O_RDONLY | O_DIRECTORY);
    struct stat status {};
    const int error = !folder || ::fstat(folder.get(), &status) != 0 ? errno : 0;
    const bool another = error == 0 && (gone_ || status.st_dev != device_ || status.st_ino != number_);
    if (error != 0 || another) {
        throwFileError(another || isGone(error) ? ENOTDIR : error, path_);
    }
    return folder;
}

platform::OrderFolder::Holder LinuxOrderFolder::hold() {
    open();
    return hold_.take() ? Holder::ours : Holder::another;
}

// Calls the function with the folder and each name in it.
template <typename Function>
void LinuxOrderFolder::forEachName(Function function) const {
    const std::unique_ptr<DIR, CloseFolder> folder(::fdopendir(open().release()));
    errno = folder ? 0 : errno;
    while (const dirent* entry = folder ? ::readdir(folder.get()) : nullptr) {
        function(::dirfd(folder.get()), static_cast<const char*>(entry->d_name));
        errno = 0;
    }
    if (errno != 0) {
        throwFileError(errno, path_);
    }
}

std::vector<platform::OrderFile> LinuxOrderFolder::files() {
    const time_t now = ::time(nullptr);
    std::vector<platform::OrderFile> result;
    forEachName([&](int folder, const char* name) {
        struct stat status {};
        if (::messenger::orderFileName(name) && ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
            result.push_back({name, now - status.st_mtim.tv_sec});
        }
    });
    return result;
}

// The name as the disk has it, in any case; empty where there is none.
std::string LinuxOrderFolder::spelling(const std::string& name) const {
    std::string found;
    forEachName([&](int /*folder*/, const char* candidate) {
        if (isSameName(candidate, name)) {
            found = candidate;
        }
    });
    return found;
}

std::string LinuxOrderFolder::read(const std::string& name) {
    const FileDescriptor folder = open();
    const FileDescriptor file = openOwn(folder.get(), name, O_RDONLY, fileNamed(name));
    if (!file) {
        throwFileError(EACCES, fileNamed(name));
    }
    std::string content(mostBytes + 1, '\0');
    const std::optional<std::size_t> count = readUpTo(file.get(), content.data(), content.size());
    if (!count) {
        throwFileError(errno, fileNamed(name));
    }
    content.resize(*count);
    return content;
}

bool LinuxOrderFolder::make(const std::string& name, std::string_view content) {
    if (!spelling(name).empty()) {
        return false;
    }
    const FileDescriptor folder = open();
    int error = makeWhole(folder.get(), name, content, fileNamed(name));
    if (error != 0 && error != EEXIST) {
        error = makeInPlace(folder.get(), name, content, fileNamed(name));
    }
    if (error != 0 && error != EEXIST) {
        throwFileError(error, fileNamed(name));
    }
    return error == 0;
}

void LinuxOrderFolder::change(const std::string& name, std::string_view content) {
    const std::string path = fileNamed(name);
    const FileDescriptor folder = open();
    int error = 0;
    if (const FileDescriptor file = openOwn(folder.get(), name, O_WRONLY, path)) {
        error = changeContent(file.get(), content);
    } else {
        error = replaceFile(path, content, {.durable = true});  // that of another user's messenger, which is no more
    }
    if (error != 0) {
        throwFileError(error, path);
    }
}

bool LinuxOrderFolder::rename(const std::string& name, const std::string& newName) {
    const FileDescriptor folder = open();
    const int error = spelling(newName).empty() ? renameWithout(folder.get(), name, newName) : EEXIST;
    if (error != 0 && error != EEXIST) {
        throwFileError(error, fileNamed(name));
    }
    return error == 0;
}

bool LinuxOrderFolder::remove(const std::string& name) noexcept {
    try {
        return ::unlinkat(open().get(), name.c_str(), 0) == 0 || errno == ENOENT;
    } catch (...) {
        return false;
    }
}

std::string LinuxOrderFolder::completionMark() {
    const std::string name = spelling(completionName);
    struct stat status {};
    const bool there = !name.empty() && ::lstat(fileNamed(name).c_str(), &status) == 0;
    return there ? markOf(status) : std::string();
}

bool LinuxOrderFolder::isAt(const std::string& path) {
    ResolvedPath found = findPath(path);
    if (found.error != 0) {
        found = findPath(withLongNames(path, path_));
    }
    struct stat status {};
    return found.error == 0 && ::stat(found.path.c_str(), &status) == 0 && status.st_dev == device_ &&
           status.st_ino == number_;
}

void LinuxOrderFolder::take(std::vector<platform::MessengerEvent>& events) {
    const FolderWatch::Seen seen = watch_.take();
    if (seen == FolderWatch::Seen::end) {
        gone_ = true;
        queue_.remove(watch_.descriptor());
    }
    if (seen != FolderWatch::Seen::nothing) {
        events.push_back({.kind = platform::MessengerEvent::Kind::folderChanged, .folder = this, .how = {}});
    }
}

}  // namespace platform_linux::messenger
