// The characters of a symbology, found by their position.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace barcode {

// Positions in a set string; the first one of a character that stands in it twice.
class CharacterSet {
public:
    explicit constexpr CharacterSet(std::string_view characters) : characters_(characters) {
        positions_.fill(none);
        for (std::size_t position = characters.size(); position-- > 0;) {
            positions_[static_cast<unsigned char>(characters[position])] = static_cast<std::int8_t>(position);
        }
    }

    constexpr bool contains(char character) const { return entry(character) != none; }
    // Of a character that the set contains.
    constexpr std::size_t position(char character) const { return static_cast<std::size_t>(entry(character)); }
    constexpr char character(std::size_t position) const { return characters_[position]; }
    constexpr std::string_view characters() const { return characters_; }

private:
    static constexpr std::int8_t none = -1;
    constexpr std::int8_t entry(char character) const { return positions_[static_cast<unsigned char>(character)]; }

    std::string_view characters_;
    std::array<std::int8_t, 256> positions_{};
};

inline constexpr CharacterSet digits("0123456789");

// The sum of what the characters of a text stand for, weighted 1, 2, 3, ... from the right; the weights begin at 1
// again behind the greatest one.
template <typename ValueOf>
constexpr std::size_t weightedSum(std::string_view text, std::size_t greatestWeight, const ValueOf& valueOf) {
    std::size_t sum = 0;
    std::size_t weight = 1;
    for (std::size_t index = text.size(); index-- > 0;) {
        sum += weight * valueOf(text[index]);
        weight = weight == greatestWeight ? 1 : weight + 1;
    }
    return sum;
}

}  // namespace barcode
