#include "platform/linux/memory_room.h"

#include <sys/mman.h>

namespace platform_linux {

bool hasMemoryFor(std::size_t bytes) {
    void* memory = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory != MAP_FAILED && ::munmap(memory, bytes) == 0;
}

}  // namespace platform_linux
