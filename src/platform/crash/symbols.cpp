#include "platform/crash/symbols.h"

#include <algorithm>

namespace platform::crash {

namespace {

constexpr std::size_t identityWords = 4;
constexpr std::size_t headWords = 1 + identityWords;

}  // namespace

Routine routineAt(SymbolTable table, std::uintptr_t place) noexcept {
    if (table == nullptr) {
        return {};
    }
    const std::uint32_t count = table[0];
    const std::uint32_t* const begins = table + headWords;
    const std::uint32_t* const behind = std::upper_bound(begins, begins + count, place);
    if (behind == begins) {
        return {};
    }
    const std::ptrdiff_t index = behind - begins - 1;
    const char* const names = reinterpret_cast<const char*>(begins + std::size_t{2} * count);
    return {names + begins[static_cast<std::ptrdiff_t>(count) + index],
            static_cast<std::uint32_t>(place - begins[index])};
}

std::string_view identityOf(SymbolTable table) noexcept {
    return table == nullptr
               ? std::string_view()
               : std::string_view(reinterpret_cast<const char*>(table + 1), identityWords * sizeof(*table));
}

}  // namespace platform::crash
