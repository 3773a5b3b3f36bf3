#include "platform/linux/messenger/dos_names.h"

#include <algorithm>

namespace platform_linux::messenger {

namespace {

// "FIRMAD~1" for "Firma Daten".
bool isShortFor(std::string_view shown, std::string_view name) {
    std::string letters(name);
    std::erase_if(letters, [](char c) { return c == ' ' || c == '.'; });
    const std::size_t tilde = shown.find('~');
    return tilde != std::string_view::npos && tilde > 0 &&
           isSameName(shown.substr(0, tilde), std::string_view(letters).substr(0, tilde));
}

}  // namespace

bool isSameName(std::string_view one, std::string_view other) {
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    return std::ranges::equal(one, other, {}, upper, upper);
}

std::string withLongNames(std::string path, std::string_view folder) {
    std::ranges::replace(path, '\\', '/');
    std::string_view rest(path);
    std::string end;
    while (true) {
        const std::string_view shown = rest.substr(rest.rfind('/') + 1);
        const std::string_view name = folder.substr(folder.rfind('/') + 1);
        if (name.empty() || (!isSameName(shown, name) && !isShortFor(shown, name))) {
            return std::string(rest) + end;
        }
        end.insert(0, name).insert(0, "/");
        rest.remove_suffix(std::min(shown.size() + 1, rest.size()));
        folder.remove_suffix(name.size() + 1);
    }
}

}  // namespace platform_linux::messenger
