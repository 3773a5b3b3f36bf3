#include "platform/windows/print/dos_characters.h"

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/windows/wide_text.h"

namespace platform_windows::print {

namespace {

// Where the system is set to UTF-8 throughout, the host still writes in the code page of the user's language.
UINT dosCodePage() {
    constexpr UINT western = 850;
    if (::GetOEMCP() != CP_UTF8) {
        return CP_OEMCP;
    }
    DWORD number = 0;
    ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IDEFAULTCODEPAGE | LOCALE_RETURN_NUMBER,
                     reinterpret_cast<wchar_t*>(&number), sizeof number / sizeof(wchar_t));
    return number > CP_OEMCP && number != CP_UTF8 ? number : western;
}

}  // namespace

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

}  // namespace platform_windows::print
