#include "platform/linux/unfinished_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <ctime>
#include <memory>
#include <random>
#include <string_view>
#include <utility>

#include "platform/linux/file_descriptor.h"

namespace platform_linux {

namespace {

constexpr std::string_view prefix = ".krvwinpr-";
constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";

constexpr std::array endingSignals = {SIGTERM, SIGHUP, SIGINT};

// What a signal handler may look at: it can neither lock nor allocate.
struct Slot {
    std::atomic<bool> taken = false;  // by an object
    std::atomic<bool> valid = false;  // the path is complete
    int folder = -1;
    std::array<char, PATH_MAX> path{};
};
static_assert(std::atomic<bool>::is_always_lock_free);
std::array<Slot, 4> slots;  // more than one run has at a time

// The handler is the default one again by now, and the signal blocked until this returns.
extern "C" void removeUnfinishedAndEnd(int number) {
    removeUnfinished();
    ::raise(number);
}

sigset_t endingSet() {
    sigset_t set{};
    ::sigemptyset(&set);
    for (const int number : endingSignals) {
        ::sigaddset(&set, number);
    }
    return set;
}

bool isUnfinishedName(std::string_view name) {
    return name.starts_with(prefix) && name.size() > prefix.size() &&
           name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-", prefix.size()) == std::string_view::npos;
}

bool isAbandoned(int folder, const char* name) {
    constexpr std::time_t old = std::time_t{6} * 60 * 60;
    struct stat status {};
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode) ||
        status.st_uid != ::geteuid() || status.st_mtime > std::time(nullptr) - old) {
        return false;
    }
    const FileDescriptor file(::openat(folder, name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return file && (::flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK);
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

}  // namespace

void removeUnfinished() noexcept {
    for (const Slot& slot : slots) {
        if (slot.valid.load(std::memory_order_acquire)) {
            ::unlinkat(slot.folder, slot.path.data(), 0);
        }
    }
}

std::string unfinishedName() {
    std::array<std::uint8_t, 16> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        std::random_device source;
        std::generate(bytes.begin(), bytes.end(), [&source] { return static_cast<std::uint8_t>(source()); });
    }
    std::string name(prefix);
    for (const std::uint8_t byte : bytes) {
        name += letters[byte % letters.size()];
    }
    return name;
}

void UnfinishedName::hold(int folder, std::string path) {
    release();
    folder_ = folder;
    path_ = std::move(path);
    for (std::size_t i = 0; i < slots.size() && slot_ < 0 && path_.size() < PATH_MAX; ++i) {
        if (!slots[i].taken.exchange(true)) {
            slot_ = static_cast<int>(i);
            slots[i].folder = folder;
            *std::copy(path_.begin(), path_.end(), slots[i].path.begin()) = '\0';
            slots[i].valid.store(true, std::memory_order_release);
        }
    }
}

void UnfinishedName::release() noexcept {
    if (slot_ >= 0) {
        Slot& slot = slots[static_cast<std::size_t>(std::exchange(slot_, -1))];
        slot.valid.store(false);
        slot.taken.store(false);
    }
    path_.clear();
}

void UnfinishedName::remove() noexcept {
    if (*this) {
        ::unlinkat(folder_, path_.c_str(), 0);
        release();
    }
}

void removeUnfinishedOnSignals() {
    struct sigaction action {};
    action.sa_handler = removeUnfinishedAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    action.sa_mask = endingSet();
    for (const int number : endingSignals) {
        struct sigaction before {};
        if (::sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_DFL) {
            ::sigaction(number, &action, nullptr);
        }
    }
}

SignalsWait::SignalsWait() {
    const sigset_t set = endingSet();
    ::pthread_sigmask(SIG_BLOCK, &set, &before_);
}

SignalsWait::~SignalsWait() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

void markInUse(int descriptor) {
    // A file system without locks has its age alone to tell.
    [[maybe_unused]] const int unknown = ::flock(descriptor, LOCK_EX | LOCK_NB);
}

void removeLeftovers(const std::string& folder) {
    constexpr int most = 10'000;  // names looked at; beyond that it would cost the job milliseconds
    const std::unique_ptr<DIR, CloseFolder> directory(::opendir(folder.c_str()));
    for (int i = 0; directory && i < most; ++i) {
        const dirent* entry = ::readdir(directory.get());
        if (entry == nullptr) {
            break;
        }
        const char* name = static_cast<const char*>(entry->d_name);
        if (isUnfinishedName(name) && isAbandoned(::dirfd(directory.get()), name)) {
            ::unlinkat(::dirfd(directory.get()), name, 0);
        }
    }
}

}  // namespace platform_linux
