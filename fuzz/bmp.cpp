// BMP files.
#include "pictures/bmp_file.h"

#include <algorithm>
#include <bit>

#include "pictures/bmp_header.h"
#include "round_trip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return fuzz::check({pictures::decodeBmp, pictures::encodeBmp}, data, size, [](std::string_view content) {
        const pictures::BmpHeader header = pictures::readBmpHeader(content);
        const auto& [red, green, blue, alpha] = header.masks;
        const bool exact = alpha == 0 || std::min({std::popcount(red), std::popcount(green), std::popcount(blue)}) >= 8;
        return fuzz::Header{std::int64_t{header.width} * header.height, exact ? fuzz::Holds::all : fuzz::Holds::some};
    });
}
