#include "platform/linux/pdf/deflater.h"

#include <new>

namespace platform_linux::pdf {

namespace {

// Measured on pages of reports and prose: level 1 gives 3 to 8 % more bytes than the usual 6, in 40 to 80 % of the
// time.
constexpr int level = 1;

}  // namespace

Deflater::Deflater() : compressor_(libdeflate_alloc_compressor(level)) {
    if (!compressor_) {
        throw std::bad_alloc();
    }
}

std::string_view Deflater::compress(std::string_view bytes) {
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor_.get(), bytes.size());
    if (compressed_.size() < bound) {
        compressed_.resize(bound);
    }
    const std::size_t size =
        libdeflate_zlib_compress(compressor_.get(), bytes.data(), bytes.size(), compressed_.data(), compressed_.size());
    return std::string_view(compressed_).substr(0, size);
}

}  // namespace platform_linux::pdf
