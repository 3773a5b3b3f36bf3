#include "platform/windows/gdi/font_tables.h"

#include <algorithm>
#include <vector>

namespace platform_windows::gdi {

namespace {

// Numbers have their high byte first.
int unsigned16(const std::uint8_t* bytes) { return bytes[0] << 8 | bytes[1]; }
int signed16(const std::uint8_t* bytes) { return static_cast<std::int16_t>(unsigned16(bytes)); }

}  // namespace

// The table has a name of four letters.
bool FontTables::read(std::string_view table, std::size_t offset, std::uint8_t* bytes, std::size_t count) const {
    const auto letter = [&](std::size_t index) { return static_cast<DWORD>(static_cast<unsigned char>(table[index])); };
    const DWORD tag = letter(0) | letter(1) << 8 | letter(2) << 16 | letter(3) << 24;
    return ::GetFontData(device_, tag, static_cast<DWORD>(offset), bytes, static_cast<DWORD>(count)) == count;
}

std::optional<FontTables::Underline> FontTables::underline() const {
    std::array<std::uint8_t, 4> bytes{};
    if (!read("post", 8, bytes.data(), bytes.size())) {
        return std::nullopt;
    }
    return Underline{signed16(bytes.data()), signed16(bytes.data() + 2)};
}

std::optional<std::array<int, 256>> FontTables::advances(const Glyphs& glyphs) const {
    constexpr std::size_t countAt = 34;
    constexpr std::size_t entry = 4;
    std::array<std::uint8_t, 2> bytes{};
    if (!read("hhea", countAt, bytes.data(), bytes.size())) {
        return std::nullopt;
    }
    const auto count = static_cast<std::size_t>(unsigned16(bytes.data()));
    std::vector<std::uint8_t> metrics(count * entry);
    if (count == 0 || !read("hmtx", 0, metrics.data(), metrics.size())) {
        return std::nullopt;
    }
    std::array<int, 256> advances{};
    std::transform(glyphs.begin(), glyphs.end(), advances.begin(), [&](WORD glyph) {
        // Those behind the last entry are as wide as it.
        return unsigned16(metrics.data() + std::min<std::size_t>(glyph, count - 1) * entry);
    });
    return advances;
}

}  // namespace platform_windows::gdi
