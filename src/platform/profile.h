// Port: a settings file of sections and keys, as Windows has them ("private profile").
#pragma once

#include <string>
#include <string_view>

namespace platform {

class Profile {
public:
    virtual ~Profile() = default;

    // The value of a key, or the fallback where section, key or the whole file is missing. Names count without regard
    // to the case of their letters; the first of several wins. Blanks around the value and one pair of quotes round it
    // are taken off. At most 254 characters: the buffer has 255, one of them is the end mark.
    virtual std::string text(std::string_view section, std::string_view key, std::string_view fallback) = 0;

    // Why a file that is there could not be read, with its path; empty where it was read, or is missing.
    virtual std::string failure() = 0;
};

}  // namespace platform
