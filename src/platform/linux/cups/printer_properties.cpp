#include "platform/linux/cups/printer_properties.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

#include "platform/linux/desktop.h"
#include "platform/spooler.h"

namespace platform_linux::cups {

namespace {

bool openAddress(std::string address) {
    std::string program = "xdg-open";
    std::array<char*, 3> arguments = {program.data(), address.data(), nullptr};
    pid_t child = 0;
    if (::posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) {
        return false;
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

void showQueuePage(const std::string& queue) {
    const std::string address = "http://localhost:631/printers/" + queue;
    if (!desktopNamed() || !openAddress(address)) {
        throw platform::SpoolerError(ENOTSUP, "Die Eigenschaften des Druckers „" + queue +
                                                  "“ lassen sich hier nicht anzeigen. Sie stehen im Browser unter " +
                                                  address + ".");
    }
}

}  // namespace platform_linux::cups
