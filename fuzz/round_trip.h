// What the fuzzers of picture files share.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "runtime/error.h"
#include "unit/support/pixels.h"

namespace fuzz {

// One of very many pixels only takes time.
inline constexpr std::int64_t mostPixels = 1 << 16;

// Ends the process where there is a fault.
inline void end(std::string_view fault) {
    if (!fault.empty()) {
        std::fprintf(stderr, "%s\n", fault.data());
        std::abort();
    }
}

// What a file's header says; the colours that it can hold: all, or all but some opposite ones.
enum class Holds { all, some };
struct Header {
    std::int64_t pixels = 0;
    Holds colors = Holds::all;
};

// Ends the process where a file that can be read is not written back as it should be. A file that is refused is fine.
template <typename Inspect>
int check(const support::Codec& codec, const std::uint8_t* data, std::size_t size, Inspect inspect) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    Header header;
    try {
        header = inspect(content);
        if (header.pixels > mostPixels) {
            return 0;
        }
        codec.decode(content);
    } catch (const runtime::Error&) {
        return 0;
    }
    end(support::faultOf(codec, content, header.colors == Holds::all));
    return 0;
}

}  // namespace fuzz
