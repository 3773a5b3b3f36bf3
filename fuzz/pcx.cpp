// PCX files.
#include "pictures/pcx_file.h"

#include "pictures/pcx_header.h"
#include "round_trip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return fuzz::check({pictures::decodePcx, pictures::encodePcx}, data, size, [](std::string_view content) {
        const pictures::PcxHeader header = pictures::readPcxHeader(content);
        return fuzz::Header{std::int64_t{header.width} * header.height};
    });
}
