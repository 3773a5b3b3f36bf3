// What a page must know of a JPEG file (ISO/IEC 10918-1) to show it as it is.
#pragma once

#include <optional>
#include <string_view>

namespace platform_linux::pdf {

struct JpegHeader {
    int width = 0;
    int height = 0;
    int components = 0;  // 1: grey, 3: a colour of three
};

// Nothing for what readers of PDF do not know or might show in other colours than picture programs do: other processes
// than baseline and progressive, other than 8 bits a component, three components that only their names say to be red,
// green and blue, and four of them, which are inks.
std::optional<JpegHeader> readJpegHeader(std::string_view file);

}  // namespace platform_linux::pdf
