// What the tests of the Linux adapter share.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "unit/support/adapter_test.h"

namespace linux_support {

using namespace support;

// An empty file that is open, and removed with the object.
class TemporaryFile {
public:
    TemporaryFile() : descriptor_(::open(path().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { ::close(descriptor_); }

    int descriptor() const { return descriptor_; }
    std::string path() const { return folder_ / "file"; }

private:
    TemporaryFolder folder_;
    int descriptor_;
};

// A variable of the environment for as long as the object lives; a null pointer unsets it.
class Variable {
public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* before = std::getenv(name)) {
            before_ = before;
        }
        set(value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { set(before_ ? before_->c_str() : nullptr); }

private:
    void set(const char* value) const { value != nullptr ? ::setenv(name_, value, 1) : ::unsetenv(name_); }

    const char* name_;
    std::optional<std::string> before_;
};

inline mode_t modeOf(const std::string& path) {
    return static_cast<mode_t>(std::filesystem::status(path).permissions());
}

// Starts a child process; its exit code is what the function returns, or 99 where an expectation failed in it.
inline pid_t start(const std::function<int()>& function) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(60);
        const int code = function();
        ::_exit(testing::Test::HasFailure() ? 99 : code);
    }
    return child;
}

// The exit code, or minus the number of the signal that ended the process.
inline int ended(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

// Makes calls of the system fail with an error from here on, as file systems do that lack them. In a child process
// only, as nothing takes it back.
inline void refuseCalls(int error, const std::vector<long>& calls) {
    std::vector<sock_filter> rules{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (const long call : calls) {
        rules.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1));
        rules.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)));
    }
    rules.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog program{static_cast<unsigned short>(rules.size()), rules.data()};
    ASSERT_EQ(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
}

// Sets back the time of a file's last change.
inline void makeOld(const std::string& path, std::chrono::hours by) {
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - by);
}

constexpr uid_t nobody = 65534;
inline uid_t ownerOf(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? status.st_uid : uid_t(-1);
}

}  // namespace linux_support
