// The shortest way through the code sets of Code 128 (ISO/IEC 15417:2007, 4.3).
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace barcode {

enum class CodeSet : std::uint8_t { a, b, c };

// Values of the characters that do not stand for data.
namespace code128_value {
inline constexpr std::uint8_t shift = 98;
inline constexpr std::uint8_t codeC = 99;
inline constexpr std::uint8_t codeB = 100;
inline constexpr std::uint8_t codeA = 101;
inline constexpr std::uint8_t startA = 103;  // startB and startC follow
}  // namespace code128_value

std::uint8_t startValue(CodeSet set);

// The value of a character, code 0 to 95 in set A, 32 to 127 in set B.
std::uint8_t valueOf(CodeSet set, unsigned char character);

// Values of a symbol's characters, start character first, without check and stop character: as few as there can be for
// data of codes 0 to 127. Takes time and memory in proportion to the length.
std::vector<std::uint8_t> shortestValues(std::string_view data);

}  // namespace barcode
