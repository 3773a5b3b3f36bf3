// What the tests of the Linux adapter share.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>

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

}  // namespace linux_support
