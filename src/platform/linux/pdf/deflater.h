// Compression stage: a whole stream at a time, in the zlib format (RFC 1950).
#pragma once

#include <libdeflate.h>

#include <string>
#include <string_view>

#include "platform/linux/fonts/scoped.h"

namespace platform_linux::pdf {

class Deflater {
public:
    // Throws std::bad_alloc.
    Deflater();

    // The compressed bytes; valid until the next call, whose memory they share.
    std::string_view compress(std::string_view bytes);

private:
    fonts::Scoped<libdeflate_compressor, libdeflate_free_compressor> compressor_;
    std::string compressed_;
};

}  // namespace platform_linux::pdf
