// What the tests of the Linux adapter share.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "runtime/error.h"

namespace linux_support {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "krv-test-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    std::string operator/(std::string_view name) const { return (path_ / name).string(); }
    std::set<std::string> names() const {
        std::set<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            result.insert(entry.path().filename().string());
        }
        return result;
    }

private:
    std::filesystem::path path_;
};

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

inline void put(const std::string& path, std::string_view content) {
    std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
}

inline std::string get(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

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
    void set(const char* value) const {
        if (value != nullptr) {
            ::setenv(name_, value, 1);
        } else {
            ::unsetenv(name_);
        }
    }

    const char* name_;
    std::optional<std::string> before_;
};

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

// A disk that takes files of that size only.
inline void limitFileSize(rlim_t bytes) {
    const rlimit limit{bytes, bytes};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::signal(SIGXFSZ, SIG_IGN);
}

// Number of the run-time error that the call raises; 0 for none.
inline int errorOf(const std::function<void()>& call, std::string* message = nullptr) {
    try {
        call();
    } catch (const runtime::Error& error) {
        if (message != nullptr) {
            *message = error.message();
        }
        return error.number();
    }
    return 0;
}

}  // namespace linux_support
