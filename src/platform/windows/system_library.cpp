#include "platform/windows/system_library.h"

#include <exception>

#include "platform/windows/places.h"

namespace platform_windows {

HMODULE systemLibrary(const std::wstring& name) noexcept {
    try {
        // With its whole path this flag has the library's own folder searched first for what it depends on, and not the
        // program's, where users may be able to put something.
        const std::wstring folder = systemFolder();
        return folder.empty() ? nullptr
                              : ::LoadLibraryExW((folder + name).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    } catch (const std::exception&) {
        return nullptr;
    }
}

void loadControls() noexcept {
    // By this name, for which the manifest says the place.
    static const HMODULE controls = ::LoadLibraryW(L"comctl32.dll");
    static_cast<void>(controls);
}

}  // namespace platform_windows
