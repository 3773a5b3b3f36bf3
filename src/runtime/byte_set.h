// Searching text for a few bytes, a machine word at a time.
#pragma once

#include <bit>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string_view>

namespace runtime {

template <char... members>
class ByteSet {
public:
    // Where the first of them is, at a position or behind it; the text's size where there is none.
    static std::size_t find(std::string_view text, std::size_t from = 0) {
        using Word = std::size_t;
        for (; from + sizeof(Word) <= text.size(); from += sizeof(Word)) {
            Word word = 0;
            std::memcpy(&word, text.data() + from, sizeof word);
            if (const Word found = (zeros(word ^ spread(members)) | ...); found != 0) {
                if constexpr (std::endian::native == std::endian::little) {
                    return from + static_cast<std::size_t>(std::countr_zero(found)) /
                                      std::numeric_limits<unsigned char>::digits;
                }
                break;
            }
        }
        while (from < text.size() && !((text[from] == members) || ...)) {
            ++from;
        }
        return from;
    }

private:
    static constexpr std::size_t ones = std::numeric_limits<std::size_t>::max() / 0xFF;

    static constexpr std::size_t spread(char byte) { return ones * static_cast<unsigned char>(byte); }
    // The highest bit of each byte that is zero; of those above the first such byte it may be set as well.
    static constexpr std::size_t zeros(std::size_t word) { return (word - ones) & ~word & (ones << 7); }
};

}  // namespace runtime
