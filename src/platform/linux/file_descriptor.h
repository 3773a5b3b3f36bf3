// Owner of a POSIX file descriptor.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace platform_linux {

class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { close(); }

    int get() const noexcept { return descriptor_; }
    explicit operator bool() const noexcept { return descriptor_ >= 0; }

    // Somebody else's from now on.
    int release() noexcept { return std::exchange(descriptor_, -1); }

    // Closes now, for those who need to know that what was written has arrived: false with errno set where it has not.
    bool close() noexcept {
        const int descriptor = std::exchange(descriptor_, -1);
        return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;  // closed all the same
    }

private:
    int descriptor_ = -1;
};

}  // namespace platform_linux
