// PCX files.
#include "pictures/pcx_file.h"

#include "pictures/pcx_header.h"
#include "round_trip.h"
#include "runtime/error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    try {
        const graphics::PcxHeader header = pictures::readPcxHeader(content);
        if (std::int64_t{header.width} * header.height <= fuzz::mostPixels) {
            fuzz::checkRoundTrip({graphics::decodePcx, pictures::encodePcx}, content);
        }
    } catch (const runtime::Error&) {
        return 0;
    }
    return 0;
}
