#include "platform/windows/crash/utf8_text.h"

#include <windows.h>

#include <array>

namespace platform_windows::crash {

void addUtf8(platform::crash::FixedText& text, std::wstring_view added) noexcept {
    constexpr std::size_t mostBytes = 4;
    std::array<char, mostBytes> bytes{};
    while (!added.empty()) {
        const bool pair = added.size() > 1 && IS_SURROGATE_PAIR(added[0], added[1]);
        const std::size_t units = pair ? 2 : 1;
        const int length = ::WideCharToMultiByte(CP_UTF8, 0, added.data(), static_cast<int>(units), bytes.data(),
                                                 static_cast<int>(mostBytes), nullptr, nullptr);
        text << std::string_view(bytes.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
        added.remove_prefix(units);
    }
}

}  // namespace platform_windows::crash
