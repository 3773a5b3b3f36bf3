// Names of the tables of an OpenType font.
#pragma once

#include <hb.h>

#include <string_view>

namespace platform_linux::fonts {

// The tag of a name of four letters.
constexpr hb_tag_t tableTag(std::string_view name) {
    hb_tag_t tag = 0;
    for (const char letter : name) {
        tag = (tag << 8) | static_cast<unsigned char>(letter);
    }
    return tag;
}

}  // namespace platform_linux::fonts
