#include "platform/linux/process_start.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace platform_linux {

namespace {

void fillStandardDescriptors() {
    // A new descriptor is the lowest number free, so this ends with the first one beyond standard error.
    int descriptor = -1;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

void ignoreSignal(int number) {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    ::sigaction(number, &ignore, nullptr);
}

}  // namespace

void prepareProcess() {
    fillStandardDescriptors();
    ignoreSignal(SIGPIPE);
    ignoreSignal(SIGXFSZ);
}

}  // namespace platform_linux
