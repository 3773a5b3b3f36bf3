// Pointers and handles that the system's functions keep and give back as numbers.
#pragma once

#include "platform/windows/gdi/system_headers.h"

namespace platform_windows::forms {

template <typename Pointer>
Pointer keptPointer(LONG_PTR number) noexcept {
    return reinterpret_cast<Pointer>(number);  // NOLINT(performance-no-int-to-ptr): there is no other way
}

}  // namespace platform_windows::forms
