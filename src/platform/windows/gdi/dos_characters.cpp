#include "platform/windows/gdi/dos_characters.h"

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/windows/code_page.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::gdi {

DosCharacters dosCharacters() {
    constexpr wchar_t replacement = 0xFFFD;
    DosCharacters characters{};
    characters[0] = L' ';
    const UINT codePage = dosCodePage();
    for (std::size_t code = 1; code < characters.size(); ++code) {
        const auto byte = static_cast<char>(code);
        const std::wstring character = decode(std::string_view(&byte, 1), codePage, MB_USEGLYPHCHARS);
        characters[code] = character.size() == 1 && character[0] != 0 ? character[0] : replacement;
    }
    return characters;
}

}  // namespace platform_windows::gdi
