#include "platform/linux/starter.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "runtime/whole_number.h"

namespace platform_linux {

namespace {

bool isPipeToWrite(int descriptor) {
    struct stat status {};
    const int flags = ::fcntl(descriptor, F_GETFL);
    return flags >= 0 && (flags & O_ACCMODE) == O_WRONLY && ::fstat(descriptor, &status) == 0 &&
           S_ISFIFO(status.st_mode);
}

}  // namespace

Starter::Starter() {
    const char* variable = ::getenv(starterVariable);
    if (variable == nullptr) {
        return;
    }
    const int descriptor = runtime::wholeNumber<int>(variable).value_or(-1);
    ::unsetenv(starterVariable);
    if (descriptor > STDERR_FILENO && isPipeToWrite(descriptor) && ::fcntl(descriptor, F_SETFD, FD_CLOEXEC) == 0) {
        descriptor_ = descriptor;
    }
}

Starter::~Starter() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void Starter::tellCompletion() noexcept {
    if (descriptor_ >= 0) {
        while (::write(descriptor_, "K", 1) < 0 && errno == EINTR) {
        }
    }
}

}  // namespace platform_linux
