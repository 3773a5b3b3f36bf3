// Numbers in the headers of picture files: least significant byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pictures {

inline std::uint8_t byteAt(std::string_view bytes, std::size_t position) {
    return position < bytes.size() ? static_cast<std::uint8_t>(bytes[position]) : std::uint8_t{0};
}

// The number at a position; 0 where it is not all there, as a field that a short header does not have.
inline std::uint32_t numberAt16(std::string_view bytes, std::size_t position) {
    return position + 2 > bytes.size() ? 0 : byteAt(bytes, position) | std::uint32_t{byteAt(bytes, position + 1)} << 8;
}

inline std::uint32_t numberAt32(std::string_view bytes, std::size_t position) {
    return position + 4 > bytes.size() ? 0 : numberAt16(bytes, position) | numberAt16(bytes, position + 2) << 16;
}

// Replaces two or four bytes that are there.
inline void putNumber16(std::string& bytes, std::size_t position, std::uint32_t value) {
    bytes[position] = static_cast<char>(value & 0xFF);
    bytes[position + 1] = static_cast<char>(value >> 8 & 0xFF);
}

inline void putNumber32(std::string& bytes, std::size_t position, std::uint32_t value) {
    putNumber16(bytes, position, value & 0xFFFF);
    putNumber16(bytes, position + 2, value >> 16);
}

// The bytes from a position on, as pixels are.
inline const std::uint8_t* pixelsAt(std::string_view bytes, std::size_t position) {
    return reinterpret_cast<const std::uint8_t*>(bytes.data()) + position;
}

inline std::uint8_t* pixelsAt(std::string& bytes, std::size_t position) {
    return reinterpret_cast<std::uint8_t*>(bytes.data()) + position;
}

}  // namespace pictures
