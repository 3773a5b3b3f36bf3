// A font's own numbers, in units of its outlines, whatever the device.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/windows/gdi/system_headers.h"

namespace platform_windows::gdi {

using Glyphs = std::array<WORD, 256>;

// Of the OpenType font selected on a device. Nothing where the font selected is of another kind, or damaged.
class FontTables {
public:
    explicit FontTables(HDC device) : device_(device) {}

    struct Underline {
        int top = 0;  // above the baseline
        int thickness = 0;
    };
    std::optional<Underline> underline() const;

    std::optional<std::array<int, 256>> advances(const Glyphs& glyphs) const;

private:
    bool read(std::string_view table, std::size_t offset, std::uint8_t* bytes, std::size_t count) const;

    HDC device_;
};

}  // namespace platform_windows::gdi
