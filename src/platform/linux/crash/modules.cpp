#include "platform/linux/crash/modules.h"

#include <dlfcn.h>
#include <link.h>

#include <array>

#include "platform/linux/module.h"
#include "runtime/program.h"

namespace platform_linux::crash {

namespace {

using platform::crash::Module;

constexpr std::size_t mostModules = mostLoadedModules + 1;

const link_map* mapAt(const void* address) noexcept {
    dl_find_object found{};
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the loader only looks at the number
    return ::_dl_find_object(const_cast<void*>(address), &found) == 0 ? found.dlfo_link_map : nullptr;
}

std::string_view fileName(std::string_view path) noexcept { return path.substr(path.rfind('/') + 1); }

Module moduleOf(const link_map* map) noexcept {
    Module module{fileName(map->l_name), map->l_addr, nullptr};
    if (map == mapAt(krvwinpr_symbols)) {
        return {runtime::programName, map->l_addr, krvwinpr_symbols};
    }
    for (const LoadedModule& loaded : loadedModules()) {
        if (loaded.handle == map) {
            module.symbols = loaded.symbols;
        }
    }
    return module;
}

}  // namespace

Module moduleAt(std::uintptr_t address) noexcept {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): it is one
    const link_map* map = mapAt(reinterpret_cast<const void*>(address));
    return map != nullptr ? moduleOf(map) : Module();
}

std::span<const Module> ownModules() noexcept {
    static std::array<Module, mostModules> modules;
    std::size_t count = 0;
    modules[count++] = moduleAt(reinterpret_cast<std::uintptr_t>(&krvwinpr_symbols[0]));
    for (const LoadedModule& loaded : loadedModules()) {
        modules[count++] = moduleOf(static_cast<const link_map*>(loaded.handle));
    }
    return std::span(modules).first(count);
}

}  // namespace platform_linux::crash
