#include "platform/windows/virtual_store.h"

#include "platform/windows/files.h"
#include "platform/windows/places.h"
#include "platform/windows/wide_text.h"

namespace platform_windows {

std::wstring redirectedFile(const std::wstring& path) {
    const std::wstring data = localData();
    const std::size_t colon = path.find(LR"(:\)");
    if (data.empty() || colon == std::wstring::npos) {
        return {};
    }
    const std::wstring file = nativePath(narrow(data + LR"(\VirtualStore)" + path.substr(colon + 1)));
    return isFile(file) ? file : std::wstring();
}

}  // namespace platform_windows
