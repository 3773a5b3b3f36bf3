// Loaded before a program (LD_PRELOAD): lets the N-th allocation fail, KRV_FAIL=N, and every mapping of 256 MiB, so
// that the program knows memory to be short; the file KRV_COUNT is given the number of allocations at the end. What
// counts is the program, its modules, and the libraries that are meant to survive it; others end the process themselves
// where they get no memory.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" {
void* __libc_malloc(std::size_t size);                      // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);   // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* memory, std::size_t size);       // NOLINT(bugprone-reserved-identifier)
void* __libc_memalign(std::size_t unit, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
}

namespace {

std::atomic<long> allocations = 0;
long failing = 0;

bool counts(const void* caller) {
    Dl_info place{};
    if (::dladdr(caller, &place) == 0) {
        return false;
    }
    const std::string_view file = place.dli_fname;
    for (const char* name : {"KRVWinPr", "krvwinpr-", "libstdc++", "libharfbuzz", "libdeflate", "libfontconfig"}) {
        if (file.find(name) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

bool fails(const void* caller) {
    if (!counts(caller) || ++allocations != failing) {
        return false;
    }
    errno = ENOMEM;
    return true;
}

[[gnu::constructor]] void readOrder() {
    const char* order = std::getenv("KRV_FAIL");
    failing = order != nullptr ? std::atol(order) : 0;
}

[[gnu::destructor]] void writeCount() {
    if (const char* file = std::getenv("KRV_COUNT")) {
        const int descriptor = ::open(file, O_WRONLY | O_CREAT | O_TRUNC, 0600);
        ::dprintf(descriptor, "%ld", allocations.load());
        ::close(descriptor);
    }
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] void* malloc(std::size_t size) {
    return fails(__builtin_return_address(0)) ? nullptr : __libc_malloc(size);
}
[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) {
    return fails(__builtin_return_address(0)) ? nullptr : __libc_calloc(count, size);
}
[[gnu::visibility("default")]] void* realloc(void* memory, std::size_t size) {
    return fails(__builtin_return_address(0)) ? nullptr : __libc_realloc(memory, size);
}
[[gnu::visibility("default")]] void* aligned_alloc(std::size_t unit, std::size_t size) {
    return fails(__builtin_return_address(0)) ? nullptr : __libc_memalign(unit, size);
}
[[gnu::visibility("default")]] int posix_memalign(void** memory, std::size_t unit, std::size_t size) {
    *memory = fails(__builtin_return_address(0)) ? nullptr : __libc_memalign(unit, size);
    return *memory != nullptr ? 0 : ENOMEM;
}
[[gnu::visibility("default")]] void* mmap(void* at, std::size_t size, int rights, int flags, int file, off_t from) {
    constexpr std::size_t plenty = std::size_t{256} << 20;
    if (size >= plenty) {
        errno = ENOMEM;
        return MAP_FAILED;
    }
    return reinterpret_cast<void*>(::syscall(SYS_mmap, at, size, rights, flags, file, from));
}
}
