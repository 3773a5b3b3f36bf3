#include "platform/linux/messenger/spawn_surroundings.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace platform_linux::messenger {

SpawnSurroundings::SpawnSurroundings() {
    ::posix_spawn_file_actions_init(&files_);
    ::posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawnattr_init(&attributes_);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes_, &signals);
    ::sigaddset(&signals, SIGPIPE);
    ::sigaddset(&signals, SIGXFSZ);
    ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID);
}

SpawnSurroundings::~SpawnSurroundings() {
    ::posix_spawn_file_actions_destroy(&files_);
    ::posix_spawnattr_destroy(&attributes_);
}

void SpawnSurroundings::folder(const std::string& path) {
    ::posix_spawn_file_actions_addchdir_np(&files_, path.c_str());
}

void SpawnSurroundings::descriptor(int descriptor, int number) {
    ::posix_spawn_file_actions_adddup2(&files_, descriptor, number);
}

void SpawnSurroundings::noneFrom(int number) { ::posix_spawn_file_actions_addclosefrom_np(&files_, number); }

}  // namespace platform_linux::messenger
