#include "platform/linux/module.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <string_view>

#include "platform/linux/memory_room.h"
#include "platform/linux/paths.h"
#include "runtime/error.h"

namespace platform_linux {

namespace {

constinit std::array<LoadedModule, mostLoadedModules> loaded{};
constinit std::atomic<std::size_t> loadedCount = 0;

void note(const void* library, const void* symbols) {
    const std::size_t count = loadedCount.load(std::memory_order_relaxed);
    const bool known = std::ranges::count(loadedModules(), library, &LoadedModule::handle) > 0;
    if (!known && count < loaded.size()) {
        loaded[count] = {library, static_cast<const std::uint32_t*>(symbols)};
        loadedCount.store(count + 1, std::memory_order_release);
    }
}

std::string loaderText() {
    const char* text = ::dlerror();
    return text != nullptr ? text : "unbekannter Fehler";
}

[[noreturn]] void refuse(const std::string& reason,
                         const std::string& remedy = "KRVWinPr bitte vollständig neu installieren") {
    throw runtime::Error(runtime::errFileNotFound, reason + "; " + remedy);
}

// The package of a module that a server does without; empty for the others.
std::string packageOf(std::string_view module) {
    return module == "qt" || module == "screen" || module == "notification" ? "krvwinpr-desktop" : "";
}

// Empty where there is none; the places are those that were looked at.
std::string fileOf(const std::string& module, std::array<std::string, 2>& places) {
    const std::string program = programFile();
    if (program.empty()) {
        // The loader would look for a relative name wherever the environment and the current directory lead it.
        refuse("Das Programm findet seinen eigenen Ordner nicht; /proc einhängen oder es mit ganzem Pfad starten");
    }
    const std::string folder = program.substr(0, program.rfind('/') + 1);
    places = {folder, folder + "../lib/krvwinpr/"};
    const std::string name = "krvwinpr-" + module + ".so";
    for (const std::string& place : places) {
        std::string file = place + name;
        if (::access(file.c_str(), F_OK) == 0) {
            return file;
        }
    }
    return {};
}

// Some of the libraries that come with a module end the process where they get no memory.
void requireMemory() {
    constexpr std::size_t plenty = std::size_t{64} << 20;
    if (!hasMemoryFor(plenty)) {
        throw runtime::Error(runtime::errOutOfMemory, "bitte andere Programme beenden");
    }
}

// The loader keeps account of what is loaded, so asking it twice loads once.
void* entryOf(const std::string& file, const std::string& entryName) {
    void* library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        refuse("Das Modul lässt sich nicht laden (" + loaderText() + ")");
    }
    const auto* version = static_cast<const int*>(::dlsym(library, "krvwinpr_interface"));
    if (version == nullptr || *version != moduleInterface) {
        refuse("Das Modul " + file + " gehört zu einer anderen Fassung des Programms");
    }
    void* entry = ::dlsym(library, entryName.c_str());
    if (entry == nullptr) {
        refuse("Im Modul fehlt der Einsprung (" + loaderText() + ")");
    }
    note(library, ::dlsym(library, "krvwinpr_symbols"));
    return entry;
}

}  // namespace

std::span<const LoadedModule> loadedModules() noexcept {
    return std::span(loaded).first(loadedCount.load(std::memory_order_acquire));
}

void* moduleEntry(const std::string& name) {
    std::array<std::string, 2> places;
    const std::string file = fileOf(name, places);
    if (!file.empty()) {
        requireMemory();
        return entryOf(file, "krvwinpr_" + name);
    }
    const std::string reason = "Das Modul krvwinpr-" + name + ".so fehlt in " + places[0] + " und " + places[1];
    if (const std::string package = packageOf(name); !package.empty()) {
        refuse(reason, "bitte das Paket " + package + " installieren");
    }
    refuse(reason);
}

std::string packageToInstall(const std::string& name) {
    std::array<std::string, 2> places;
    return fileOf(name, places).empty() ? packageOf(name) : "";
}

}  // namespace platform_linux
