// Other programs, started for the user and then left alone.
#pragma once

#include <spawn.h>

#include <string>
#include <vector>

namespace platform_linux {

// Owner of what a started program gets along: no terminal, no pipe of ours that somebody may wait for the end of, and
// the usual signals.
class DetachedStart {
public:
    DetachedStart();
    DetachedStart(const DetachedStart&) = delete;
    DetachedStart& operator=(const DetachedStart&) = delete;
    ~DetachedStart();

    // Starts a program of the PATH with its arguments and does not wait for it; false where there is none of that name.
    bool start(std::vector<std::string> command) const;

private:
    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace platform_linux
