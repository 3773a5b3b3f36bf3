// What a program that the messenger starts gets along.
#pragma once

#include <spawn.h>

#include <string>

namespace platform_linux::messenger {

// No input, output and error of the messenger, the usual signals, and a session of its own, so that neither the
// messenger's terminal nor its end reaches it.
class SpawnSurroundings {
public:
    SpawnSurroundings();
    SpawnSurroundings(const SpawnSurroundings&) = delete;
    SpawnSurroundings& operator=(const SpawnSurroundings&) = delete;
    ~SpawnSurroundings();

    void folder(const std::string& path);
    // One of the messenger's, under another number.
    void descriptor(int descriptor, int number);
    // None of that number or a higher one; to be said last. The messenger may have inherited some itself.
    void noneFrom(int number);

    const posix_spawn_file_actions_t* files() const { return &files_; }
    const posix_spawnattr_t* attributes() const { return &attributes_; }

private:
    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace platform_linux::messenger
