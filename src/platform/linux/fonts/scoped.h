// Owner of an object of a C library that is released with one call.
#pragma once

#include <memory>

namespace platform_linux::fonts {

template <auto release>
struct ScopedRelease {
    template <typename Type>
    void operator()(Type* object) const noexcept {
        release(object);
    }
};

template <typename Type, auto release>
using Scoped = std::unique_ptr<Type, ScopedRelease<release>>;

}  // namespace platform_linux::fonts
