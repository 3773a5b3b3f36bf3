#include "platform/windows/code_page.h"

#include <windows.h>

#include <initializer_list>

namespace platform_windows {

namespace {

constexpr unsigned western = 850;

// What is no DOS code page: "none", the numbers that stand for another one, and Unicode.
bool isDosCodePage(unsigned number) noexcept { return number > CP_THREAD_ACP && number != CP_UTF8; }

unsigned ofLanguage(LCID language) noexcept {
    DWORD number = 0;
    ::GetLocaleInfoW(language, LOCALE_IDEFAULTCODEPAGE | LOCALE_RETURN_NUMBER, reinterpret_cast<wchar_t*>(&number),
                     sizeof number / sizeof(wchar_t));
    return number;
}

}  // namespace

unsigned dosCodePageOf(unsigned system, unsigned systemLanguage, unsigned userLanguage) noexcept {
    for (const unsigned number : {system, systemLanguage, userLanguage}) {
        if (isDosCodePage(number)) {
            return number;
        }
    }
    return western;
}

unsigned dosCodePage() noexcept {
    return dosCodePageOf(::GetOEMCP(), ofLanguage(LOCALE_SYSTEM_DEFAULT), ofLanguage(LOCALE_USER_DEFAULT));
}

}  // namespace platform_windows
