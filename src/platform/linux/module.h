// Parts of the Linux adapter that a job may not need, or not yet: shared modules beside the program, loaded when first
// used, so that the host never waits for a library that its completion file does not depend on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace platform_linux {

// Version of the interfaces between the program and its modules; a module of another version is not used.
inline constexpr int moduleInterface = 4;

// Loads the module "krvwinpr-<name>.so" from the program's folder, or from ../lib/krvwinpr beside it, never from
// anywhere else, and returns the address of its entry function "krvwinpr_<name>". Loaded once and kept until the
// program ends. Throws runtime::Error (errFileNotFound) with the loader's own text in the detail, or errOutOfMemory.
void* moduleEntry(const std::string& name);

// The package that a module comes with where that is not installed; empty where the module is there, or belongs to what
// every installation has.
std::string packageToInstall(const std::string& name);

// A module that was loaded: the loader's handle, and the names of its routines (platform/crash/symbols.h).
struct LoadedModule {
    const void* handle = nullptr;
    const std::uint32_t* symbols = nullptr;
};
inline constexpr std::size_t mostLoadedModules = 8;

// To be asked at any moment, by a handler of crashes too.
std::span<const LoadedModule> loadedModules() noexcept;

}  // namespace platform_linux
