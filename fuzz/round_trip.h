// What the fuzzers of picture files share.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "runtime/error.h"
#include "unit/support/pixels.h"

namespace fuzz {

// What a file's header says; the colours that it can hold: all, all but some opposite ones, or none exactly.
enum class Holds { all, some, none };
struct Header {
    std::int64_t pixels = 0;
    Holds colors = Holds::all;
};

// Ends the process where a file that can be read is not written back as it should be. A file that is refused is fine,
// and one of very many pixels only takes time.
template <typename Inspect>
int check(const support::Codec& codec, const std::uint8_t* data, std::size_t size, Inspect inspect) {
    constexpr std::int64_t mostPixels = 1 << 16;
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    Header header;
    try {
        header = inspect(content);
        if (header.pixels > mostPixels) {
            return 0;
        }
        const platform::Picture picture = codec.decode(content);
        if (header.colors == Holds::none) {
            codec.encode(picture, content);
            return 0;
        }
    } catch (const runtime::Error&) {
        return 0;
    }
    const std::string_view fault = support::faultOf(codec, content, header.colors == Holds::all);
    if (!fault.empty()) {
        std::fprintf(stderr, "%s\n", fault.data());
        std::abort();
    }
    return 0;
}

}  // namespace fuzz
