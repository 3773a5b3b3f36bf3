// Libraries of the system that are loaded when they are first needed, and functions that not every Windows has.
#pragma once

#include <windows.h>

#include <string>

namespace platform_windows {

// From the system's folder and nowhere else, what it depends on as well, and kept; null where it cannot be loaded.
HMODULE systemLibrary(const std::wstring& name) noexcept;

// The controls that the manifest asks for. Windows XP shows no box before it has them, and no form with a table.
void loadControls() noexcept;

// The function of that name; null where the library, which may be null, has none. Function is its type, such as
// decltype(&::GetTickCount).
template <typename Function>
Function functionOf(HMODULE library, const char* name) noexcept {
    return library != nullptr ? reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)))
                              : nullptr;
}

}  // namespace platform_windows
