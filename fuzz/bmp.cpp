// BMP files.
#include "pictures/bmp_file.h"

#include <algorithm>
#include <bit>

#include "pictures/bmp_header.h"
#include "round_trip.h"
#include "runtime/error.h"

namespace {

bool isExact(const pictures::BmpMasks& masks) {
    return masks.alpha == 0 ||
           std::min({std::popcount(masks.red), std::popcount(masks.green), std::popcount(masks.blue)}) >= 8;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    try {
        const graphics::BmpHeader header = pictures::readBmpHeader(content);
        if (std::int64_t{header.width} * header.height <= fuzz::mostPixels) {
            fuzz::checkRoundTrip({graphics::decodeBmp, pictures::encodeBmp}, content, isExact(header.masks));
        }
    } catch (const runtime::Error&) {
        return 0;
    }
    return 0;
}
