#include "platform/linux/detached_start.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#include "platform/linux/argument_pointers.h"

namespace platform_linux {

DetachedStart::DetachedStart() {
    ::posix_spawn_file_actions_init(&files_);
    ::posix_spawnattr_init(&attributes_);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::posix_spawn_file_actions_addopen(&files_, descriptor, "/dev/null", O_RDWR, 0);
    }
    sigset_t usual;
    ::sigemptyset(&usual);
    ::sigaddset(&usual, SIGPIPE);
    ::sigaddset(&usual, SIGXFSZ);
    ::posix_spawnattr_setsigdefault(&attributes_, &usual);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
}

DetachedStart::~DetachedStart() {
    ::posix_spawn_file_actions_destroy(&files_);
    ::posix_spawnattr_destroy(&attributes_);
}

bool DetachedStart::start(std::vector<std::string> command) const {
    const std::vector<char*> arguments = pointersTo(command);
    pid_t child = 0;
    return ::posix_spawnp(&child, arguments.front(), &files_, &attributes_, arguments.data(), environ) == 0;
}

}  // namespace platform_linux
