// What must be true of every picture file that can be read.
#pragma once

#include <string>
#include <string_view>

#include "platform/picture.h"

namespace fuzz {

// Decoding and encoding of one kind of files.
struct Codec {
    platform::Picture (*decode)(std::string_view content);
    std::string (*encode)(const platform::Picture& picture, std::string_view original);
};

// Ends the process unless a file written back shows the same colours, inverted the opposite ones, and inverted twice
// the first again; or, where the file cannot hold them exactly, some colours. A file that is refused is fine.
void checkRoundTrip(const Codec& codec, std::string_view content, bool exact = true) noexcept;

// Pictures of more pixels than this only take time.
inline constexpr std::int64_t mostPixels = 1 << 16;

}  // namespace fuzz
