#include "platform/linux/messenger/folder_hold.h"

#include <sys/file.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

#include "platform/linux/file_calls.h"
#include "platform/linux/linux_error.h"

namespace platform_linux::messenger {

namespace {

constexpr mode_t readableByAll = 0644;

enum class Lock { taken, busy, unfit, none };

// Unfit: a disk of the network wants a file that is open for writing. Disks that know no locks of whole files may know
// locks of parts of them.
Lock lock(int file, int operation) {
    if (::flock(file, operation | LOCK_NB) == 0) {
        return Lock::taken;
    }
    if (errno == EWOULDBLOCK || errno == EBADF) {
        return errno == EBADF ? Lock::unfit : Lock::busy;
    }
    struct flock whole {};
    whole.l_type = operation == LOCK_SH ? F_RDLCK : F_WRLCK;
    whole.l_whence = SEEK_SET;
    if (::fcntl(file, F_OFD_SETLK, &whole) == 0) {
        return Lock::taken;
    }
    return errno == EAGAIN || errno == EACCES ? Lock::busy : Lock::none;
}

bool isAt(const std::string& path, int file) {
    struct stat there {};
    struct stat here {};
    return ::lstat(path.c_str(), &there) == 0 && ::fstat(file, &here) == 0 && there.st_dev == here.st_dev &&
           there.st_ino == here.st_ino;
}

// For reading only where that is enough: closing a file that was open for writing is reported to all who watch the
// folder, and they would look again.
FileDescriptor openLeft(const std::string& path) {
    FileDescriptor file = openFile(path, O_RDONLY | O_NOFOLLOW);
    struct stat status {};
    if (!file && errno != ENOENT) {
        throwFileError(errno, path);
    }
    if (file && (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))) {
        throwFileError(ENODEV, path);
    }
    return file;
}

}  // namespace

FolderHold::FolderHold(std::string path, std::string text) : path_(std::move(path)), text_(std::move(text)) {}

FolderHold::~FolderHold() {
    if (locked_ && isAt(path_, file_.get())) {
        ::unlink(path_.c_str());
    }
}

bool FolderHold::take() {
    if (file_ && (!locked_ || isAt(path_, file_.get()))) {
        return true;
    }
    file_.close();
    constexpr int attempts = 5;
    // A lock ends a moment after the file of a killed process is reported as closed.
    constexpr std::chrono::milliseconds moment{2};
    Attempt result = Attempt::again;
    for (int i = 0; i < attempts && result != Attempt::done; ++i) {
        result = takeNew();
        result = result == Attempt::held ? takeLeft() : result;
        if (result == Attempt::held) {
            std::this_thread::sleep_for(moment);
        }
    }
    return result == Attempt::done;
}

FolderHold::Attempt FolderHold::takeNew() {
    FileDescriptor made = openFile(path_, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, readableByAll);
    if (!made && errno != EEXIST) {
        throwFileError(errno == ENOENT ? ENOTDIR : errno, path_);
    }
    if (!made) {
        return Attempt::held;
    }
    giveToOwnerOf(folderOf(path_), made.get());
    ::fchmod(made.get(), readableByAll);
    const Lock state = lock(made.get(), LOCK_EX);
    // Somebody may have taken it for one that was left, before it was locked.
    if (state == Lock::busy || !isAt(path_, made.get())) {
        return Attempt::again;
    }
    writeAll(made.get(), text_ + "\n");
    locked_ = state == Lock::taken;
    file_ = std::move(made);
    return Attempt::done;
}

FolderHold::Attempt FolderHold::takeLeft() {
    FileDescriptor left = openLeft(path_);
    if (!left) {
        return Attempt::again;
    }
    Lock state = lock(left.get(), LOCK_EX);
    if (state == Lock::unfit && lock(left.get(), LOCK_SH) == Lock::busy) {
        return Attempt::held;
    }
    if (state == Lock::unfit) {
        left = openFile(path_, O_RDWR | O_NOFOLLOW);
        state = left ? lock(left.get(), LOCK_EX) : Lock::busy;
    }
    if (state == Lock::none) {
        locked_ = false;
        file_ = std::move(left);
        return Attempt::done;
    }
    // Only who has the lock of the file that lies there removes it.
    if (state == Lock::busy || !isAt(path_, left.get())) {
        return Attempt::held;
    }
    if (::unlink(path_.c_str()) != 0) {
        throwFileError(errno, path_);
    }
    return Attempt::again;
}

std::string FolderHold::holder() const {
    if (file_) {
        return text_;
    }
    const FileDescriptor file = openFile(path_, O_RDONLY | O_NOFOLLOW);
    if (!file || lock(file.get(), LOCK_SH) != Lock::busy) {
        return {};
    }
    constexpr std::size_t most = 200;
    std::array<char, most> text{};
    const std::string read(text.data(), readUpTo(file.get(), text.data(), text.size()).value_or(0));
    return read.substr(0, read.find('\n'));
}

}  // namespace platform_linux::messenger
