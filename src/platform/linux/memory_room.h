// How much memory there is, before a library is called that does not survive it when there is none.
#pragma once

#include <cstddef>

namespace platform_linux {

// Whether so many bytes could be had now, in one piece.
bool hasMemoryFor(std::size_t bytes);

// Whether there is as much as nothing that prints a page comes near to.
inline bool memoryIsPlenty() {
    constexpr std::size_t plenty = std::size_t{256} << 20;
    return hasMemoryFor(plenty);
}

}  // namespace platform_linux
