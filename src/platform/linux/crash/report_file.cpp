#include "platform/linux/crash/report_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <ctime>
#include <span>

#include "platform/crash/fixed_text.h"
#include "platform/crash/report_log.h"

namespace platform_linux::crash {

namespace {

using platform::crash::longestLog;

constexpr mode_t privateFile = 0600;
constexpr mode_t privateFolder = 0700;

// An open file, without the ways to fail that an ordinary owner has.
class Descriptor {
public:
    explicit Descriptor(int number) noexcept : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    int get() const noexcept { return number_; }
    bool close() noexcept {
        const int closed = number_ < 0 ? 0 : ::close(number_);
        number_ = -1;
        return closed == 0;
    }

private:
    int number_;
};

using Path = std::array<char, PATH_MAX>;

// The folder of a path with "/" at its end; empty where the path has none.
std::string_view folderPart(std::string_view path) noexcept { return path.substr(0, path.rfind('/') + 1); }

// "<folder>.krvwinpr-err<process>", which nobody else has now. False where there is no room for it.
bool nameBeside(const char* path, Path& beside) noexcept {
    platform::crash::FixedText text(std::span<char>(beside).first(beside.size() - 1));
    text << folderPart(path) << ".krvwinpr-err";
    text.number(static_cast<std::uint64_t>(::getpid()));
    beside[text.view().size()] = '\0';
    return text.room() > 0;
}

// What root makes in somebody else's folder belongs to that somebody.
void giveToOwnerOf(std::string_view folder, int made) noexcept {
    static Path name;
    struct stat status {};
    if (::geteuid() != 0 || folder.size() >= name.size()) {
        return;
    }
    *std::copy(folder.begin(), folder.end(), name.begin()) = '\0';
    if (::stat(folder.empty() ? "." : name.data(), &status) == 0 && status.st_uid != 0) {
        [[maybe_unused]] const int refused = ::fchown(made, status.st_uid, status.st_gid);
    }
}

void makeFolders(const char* path) noexcept {
    static Path folder;
    const std::string_view whole = folderPart(path);
    if (whole.size() >= folder.size()) {
        return;
    }
    std::copy(whole.begin(), whole.end(), folder.begin());
    for (std::size_t end = whole.find('/', 1); end != std::string_view::npos; end = whole.find('/', end + 1)) {
        folder[end] = '\0';
        if (::mkdir(folder.data(), privateFolder) == 0) {
            const Descriptor made(::open(folder.data(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
            giveToOwnerOf(folderPart(folder.data()), made.get());
        }
        folder[end] = '/';
    }
}

int openToAppend(const char* log) noexcept {
    return ::open(log, O_RDWR | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, privateFile);
}

// Another crash may be at the log just now; its turn is a matter of milliseconds.
void lock(int file) noexcept {
    constexpr int attempts = 100;
    constexpr timespec pause{0, 10'000'000};
    for (int i = 0; i < attempts && ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK; ++i) {
        ::nanosleep(&pause, nullptr);
    }
}

std::string_view readEnd(int file, off_t size) noexcept {
    static std::array<char, longestLog> room;
    const off_t begin = std::max<off_t>(size - static_cast<off_t>(room.size()), 0);
    std::size_t done = 0;
    while (done < room.size()) {
        const ssize_t count = ::pread(file, room.data() + done, room.size() - done, begin + static_cast<off_t>(done));
        if (count <= 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return {room.data(), done};
}

}  // namespace

int writeParts(int file, std::string_view first, std::string_view second) noexcept {
    for (std::string_view part : {first, second}) {
        while (!part.empty()) {
            const ssize_t count = ::write(file, part.data(), part.size());
            if (count > 0) {
                part.remove_prefix(static_cast<std::size_t>(count));
            } else if (count == 0 || errno != EINTR) {
                return count == 0 ? EIO : errno;
            }
        }
    }
    return 0;
}

int replaceByParts(const char* path, std::string_view first, std::string_view second, mode_t mode) noexcept {
    static Path beside;
    struct stat old {};
    if (!nameBeside(path, beside)) {
        return ENAMETOOLONG;
    }
    if (::lstat(path, &old) == 0 && !S_ISREG(old.st_mode) && !S_ISLNK(old.st_mode)) {
        return ENODEV;
    }
    ::unlink(beside.data());
    Descriptor file(::open(beside.data(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (file.get() < 0) {
        return errno;
    }
    giveToOwnerOf(folderPart(path), file.get());
    int error = writeParts(file.get(), first, second);
    // Not every file system knows that.
    if (error == 0 && ::fdatasync(file.get()) != 0 && errno != EINVAL && errno != ENOSYS) {
        error = errno;
    }
    if (error == 0 && (!file.close() || std::rename(beside.data(), path) != 0)) {
        error = errno;
    }
    if (error != 0) {
        ::unlink(beside.data());
    }
    return error;
}

int appendEntry(const char* log, std::string_view entry) noexcept {
    makeFolders(log);
    const Descriptor file(openToAppend(log));
    struct stat before {};
    if (file.get() < 0 || ::fstat(file.get(), &before) != 0) {
        return errno;
    }
    if (!S_ISREG(before.st_mode)) {
        return ENODEV;
    }
    lock(file.get());
    ::fstat(file.get(), &before);
    if (before.st_size == 0) {
        giveToOwnerOf(folderPart(log), file.get());
    }
    if (before.st_size + static_cast<off_t>(entry.size()) > static_cast<off_t>(longestLog)) {
        const std::string_view kept = platform::crash::keptPart(readEnd(file.get(), before.st_size), entry.size());
        return replaceByParts(log, kept, entry, privateFile);
    }
    const int error = writeParts(file.get(), entry, {});
    if (error != 0) {
        [[maybe_unused]] const int cut = ::ftruncate(file.get(), before.st_size);
    }
    return error;
}

}  // namespace platform_linux::crash
