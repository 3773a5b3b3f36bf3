// Keywords of IPP as flags of the spooler's records.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace platform_linux::cups {

struct Reason {
    std::string_view keyword;
    std::uint32_t flags;
};

// Nothing for a keyword that the table lacks.
inline std::optional<std::uint32_t> flagsIn(std::span<const Reason> table, std::string_view keyword) {
    const auto found = std::ranges::find(table, keyword, &Reason::keyword);
    return found != table.end() ? std::optional(found->flags) : std::nullopt;
}

}  // namespace platform_linux::cups
