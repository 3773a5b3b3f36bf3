// Owners of what the system hands out; each gives it back when it goes out of scope.
#pragma once

#include <windows.h>

#include <memory>
#include <utility>

namespace platform_windows {

// Owns one handle. Kind names the type, the value that stands for none, and how a handle is given back:
//     struct Kind { using Handle = ...; static Handle none() noexcept; static void close(Handle) noexcept; };
template <typename Kind>
class Owner {
public:
    using Handle = typename Kind::Handle;

    Owner() = default;
    explicit Owner(Handle handle) noexcept : handle_(handle) {}
    Owner(Owner&& other) noexcept : handle_(std::exchange(other.handle_, Kind::none())) {}
    Owner& operator=(Owner&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    ~Owner() { reset(); }

    Handle get() const noexcept { return handle_; }
    explicit operator bool() const noexcept { return handle_ != Kind::none(); }

    void reset() noexcept {
        if (handle_ != Kind::none()) {
            Kind::close(std::exchange(handle_, Kind::none()));
        }
    }

    // Where a function of the system puts a new handle; what was owned is given back first.
    Handle* receive() noexcept {
        reset();
        return &handle_;
    }

private:
    Handle handle_ = Kind::none();
};

struct FileKind {
    using Handle = HANDLE;
    static Handle none() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Handle handle) noexcept { ::CloseHandle(handle); }
};
using FileHandle = Owner<FileKind>;

// A process, a thread, an event: whatever CloseHandle() ends and a null handle stands for.
struct KernelKind {
    using Handle = HANDLE;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::CloseHandle(handle); }
};
using KernelHandle = Owner<KernelKind>;

struct RegistryKind {
    using Handle = HKEY;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::RegCloseKey(handle); }
};
using RegistryKey = Owner<RegistryKind>;

// The device context of the whole screen, from GetDC(nullptr).
struct ScreenKind {
    using Handle = HDC;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::ReleaseDC(nullptr, handle); }
};
using ScreenContext = Owner<ScreenKind>;

// Memory that the system allocated for its caller.
struct LocalMemoryDeleter {
    void operator()(void* memory) const noexcept { ::LocalFree(memory); }
};
using LocalMemory = std::unique_ptr<void, LocalMemoryDeleter>;

}  // namespace platform_windows
