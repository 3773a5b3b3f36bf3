// Files that are not finished yet, and what becomes of them when the program is ended in the middle.
#pragma once

#include <csignal>
#include <string>

namespace platform_linux {

// A name for one, hidden and not to be guessed: ".krvwinpr-" and letters at random.
std::string unfinishedName();

// The name of one, as long as it has that name. The file goes with the object, and when the process is told to end.
class UnfinishedName {
public:
    UnfinishedName() = default;
    UnfinishedName(const UnfinishedName&) = delete;
    UnfinishedName& operator=(const UnfinishedName&) = delete;
    ~UnfinishedName() { remove(); }

    // The descriptor of the folder that the path starts from, or AT_FDCWD; it must stay open. To be called before the
    // file is made, so that no moment lies between; nobody else has a file of that name.
    void hold(int folder, std::string path);
    const std::string& path() const { return path_; }
    explicit operator bool() const { return !path_.empty(); }

    // The file has another name by now, or never got this one.
    void release() noexcept;
    void remove() noexcept;

private:
    int folder_ = -1;
    std::string path_;
    int slot_ = -1;
};

// Removes those whose names are held, for a process that ends at once: for handlers of signals, too.
void removeUnfinished() noexcept;

// SIGTERM, SIGHUP and SIGINT end the program as they always do, but for the files whose names are held: they go first.
// A signal that is ignored stays so.
void removeUnfinishedOnSignals();

// Lets these signals wait for as long as the object lives.
class SignalsWait {
public:
    SignalsWait();
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;
    ~SignalsWait();

private:
    sigset_t before_{};
};

// Marks an open file as one in use, however long it takes: removeLeftovers() keeps it.
void markInUse(int descriptor);

// Removes this user's unfinished files from a folder that nobody has written to for hours and nobody uses.
void removeLeftovers(const std::string& folder);

}  // namespace platform_linux
